#include "ui/SearchField.h"

#include "ui/DisplayText.h"
#include "ui/Theme.h"
#include "ui/Translation.h"

#include <QAction>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QToolButton>

#include <algorithm>
#include <cstdlib>

namespace kavendra {

namespace {

/// In UTF-16 units. Far more than a query; a larger paste is cut.
constexpr int maximumQueryLength = 32767;

std::string_view textOf(bool flag) {
    return flag ? "true" : "false";
}

/// Returns the selection of a field as "{location, length}", in UTF-16 units.
std::string selectedRange(const QLineEdit& field) {
    const int location = field.hasSelectedText() ? field.selectionStart() : field.cursorPosition();
    return "{" + std::to_string(location) + ", " + std::to_string(field.selectionLength()) + "}";
}

/// Whether QLineEdit itself selects all text for this reason.
bool selectsAllByDefault(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

/// Whether the focus goes to a menu or another window and will return to the same widget.
bool isTemporary(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

} // namespace

SearchField::SearchField(QWidget* parent) : QLineEdit(parent) {
    setMaxLength(maximumQueryLength);
    m_icon = addAction(QIcon(), LeadingPosition);
    m_clearAction = addAction(QIcon(), TrailingPosition);
    m_clearAction->setToolTip(translated("Clear") + " (" +
                              QKeySequence(QKeySequence::Cancel).toString(QKeySequence::NativeText) + ")");
    m_clearAction->setVisible(false);
    connect(m_clearAction, &QAction::triggered, this, &QLineEdit::clear);
    for (QToolButton* button : findChildren<QToolButton*>())
        button->setAccessibleName(button->defaultAction() == m_icon ? translated("Search icon")
                                                                    : translated("Clear"));
    applyColors();
    m_selectAllTimer.setSingleShot(true);
    m_selectAllTimer.setInterval(0);
    m_selectAllTimer.callOnTimeout(this, &SearchField::selectWholeText);
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_clearAction->setVisible(!text.isEmpty());
        const std::string value = text.toStdString();
        debugLog("controlTextDidChange value=", value);
        onTextChange(value);
    });
}

template <typename... Pieces>
void SearchField::debugLog(const Pieces&... pieces) const {
    if (!onDebugLog)
        return;
    std::string line = "SearchField ";
    (line.append(pieces), ...);
    onDebugLog(line);
}

void SearchField::showText(const std::string& text) {
    const QString shown = QString::fromUtf8(text);
    if (shown == this->text())
        return;
    const QSignalBlocker silent(this);
    setText(shown);
    m_clearAction->setVisible(!shown.isEmpty());
}

void SearchField::keyPressEvent(QKeyEvent* event) {
    const auto* callback = m_isComposing ? nullptr : callbackFor(*event);
    if (callback)
        (*callback)();
    else if (!m_isComposing && event->matches(QKeySequence::Cancel) && !text().isEmpty())
        clear();
    else
        QLineEdit::keyPressEvent(event);
}

void SearchField::continueWith(QKeyEvent& event) {
    setFocus(Qt::OtherFocusReason);
    m_selectAllTimer.stop(); // also with selectAllOnFocus: the text stays
    end(false);
    keyPressEvent(&event);
}

const std::function<void()>* SearchField::callbackFor(const QKeyEvent& event) const {
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const bool plain = modifiers == Qt::NoModifier;
    const bool command = modifiers == Qt::ControlModifier;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return &onSubmit;
    case Qt::Key_Up:
        return plain ? &onMoveUp : command ? &onMoveToBeginning : nullptr;
    case Qt::Key_Down:
        return plain ? &onMoveDown : command ? &onMoveToEnd : nullptr;
    case Qt::Key_Home:
        return command ? &onMoveToBeginning : nullptr;
    case Qt::Key_End:
        return command ? &onMoveToEnd : nullptr;
    default:
        return nullptr;
    }
}

void SearchField::inputMethodEvent(QInputMethodEvent* event) {
    m_isComposing = !event->preeditString().isEmpty();
    QLineEdit::inputMethodEvent(event);
}

void SearchField::focusInEvent(QFocusEvent* event) {
    if (!m_isFocusWidget) {
        gainFocus(event->reason());
        // Only selectAllOnFocus decides what is selected.
        QFocusEvent gained(event->type(),
                           selectsAllByDefault(event->reason()) ? Qt::OtherFocusReason : event->reason());
        QLineEdit::focusInEvent(&gained);
        return;
    }
    QLineEdit::focusInEvent(event);
    if (selectAllOnFocus && event->reason() == Qt::ActiveWindowFocusReason) {
        debugLog("windowDidBecomeKey reselect");
        m_selectAllTimer.start();
    }
}

void SearchField::gainFocus(Qt::FocusReason reason) {
    debugLog("becomeFirstResponder start selectAllOnFocus=", textOf(selectAllOnFocus),
             " shouldSelectAllAfterMouseDown=", textOf(m_selectsAllOnRelease));
    m_isFocusWidget = true;
    debugLog("becomeFirstResponder end becameFirstResponder=", textOf(m_isFocusWidget));
    if (!selectAllOnFocus)
        return;
    const bool isPress = reason == Qt::MouseFocusReason;
    m_selectsAllOnRelease = isPress && QGuiApplication::mouseButtons() == Qt::LeftButton;
    debugLog("becomeFirstResponder currentEventType=", isPress ? "MouseButtonPress" : "none",
             " isMouseDrivenFocus=", textOf(m_selectsAllOnRelease));
    if (!m_selectsAllOnRelease)
        m_selectAllTimer.start();
}

void SearchField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::ActiveWindowFocusReason && !m_isComposing)
        dropUndoHistory();
    m_isComposing = false;
    m_selectsAllOnRelease = false; // the release may be lost
    if (!isTemporary(event->reason()))
        m_isFocusWidget = false;
}

void SearchField::dropUndoHistory() {
    const int caret = cursorPosition();
    const int start = selectionStart();
    const int length = selectionLength();
    setText(text());
    if (length == 0)
        setCursorPosition(caret);
    else if (caret == start)
        setSelection(start + length, -length);
    else
        setSelection(start, length);
}

void SearchField::mousePressEvent(QMouseEvent* event) {
    handlePress(*event);
    QLineEdit::mousePressEvent(event);
}

void SearchField::mouseDoubleClickEvent(QMouseEvent* event) {
    handlePress(*event);
    QLineEdit::mouseDoubleClickEvent(event);
}

void SearchField::handlePress(const QMouseEvent& press) {
    if (press.button() != Qt::RightButton)
        m_selectAllTimer.stop();
    if (press.button() != Qt::LeftButton)
        return;
    countClick(press);
    debugLog("mouseDown clickCount=", std::to_string(m_clickCount),
             " shouldSelectAllAfterMouseDown=", textOf(m_selectsAllOnRelease));
}

void SearchField::countClick(const QMouseEvent& press) {
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const QPoint position = press.globalPosition().toPoint();
    const QPoint moved = position - m_lastPressPosition;
    const bool isNear =
        std::max(std::abs(moved.x()), std::abs(moved.y())) <= hints.mouseDoubleClickDistance();
    const bool isSoon =
        press.timestamp() - m_lastPressTime < static_cast<quint64>(hints.mouseDoubleClickInterval());
    m_clickCount = isNear && isSoon ? m_clickCount + 1 : 1;
    m_lastPressTime = press.timestamp();
    m_lastPressPosition = position;
}

void SearchField::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    if (std::exchange(m_selectsAllOnRelease, false) && m_clickCount == 1)
        m_selectAllTimer.start();
}

void SearchField::selectWholeText() {
    if (m_isComposing)
        return; // selecting would end the composition
    if (!hasFocus()) {
        debugLog("selectAllText via selectText");
        setFocus(Qt::OtherFocusReason);
        selectAll();
        return;
    }
    debugLog("selectAllText via editor before=", selectedRange(*this));
    selectAll();
    debugLog("selectAllText via editor after=", selectedRange(*this));
}

void SearchField::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_clearAction)
        applyColors();
}

void SearchField::applyColors() {
    // The field's own palette already has the colour that is set here.
    const QPalette& system = QGuiApplication::palette();
    m_icon->setIcon(tintedIcon("search", secondaryTextColor(system)));
    m_clearAction->setIcon(tintedIcon("clear", secondaryTextColor(system)));
    QPalette own = palette();
    own.setColor(QPalette::Base, searchFieldColor(system));
    // In the dark palette of some desktops, Qt's is black.
    own.setColor(QPalette::PlaceholderText, secondaryTextColor(system));
    if (own != palette())
        setPalette(own);
}

} // namespace kavendra
