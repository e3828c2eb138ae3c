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
#include <QTimer>
#include <QToolButton>

namespace kavendra {

namespace {

/// In UTF-16 units. Nobody types as much; what is pasted by mistake is cut.
constexpr int maximumQueryLength = 32767;

std::string_view textOf(bool flag) {
    return flag ? "true" : "false";
}

/// What of a field is selected, in UTF-16 units, written as {location, length}.
std::string selectedRange(const QLineEdit& field) {
    const int location = field.hasSelectedText() ? field.selectionStart() : field.cursorPosition();
    return "{" + std::to_string(location) + ", " + std::to_string(field.selectionLength()) + "}";
}

/// Whether QLineEdit would select all of its text by itself for this focus.
bool isByKeyboard(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

/// Whether the focus only went to a menu or another window and will be back without having been moved.
bool isInterruption(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

} // namespace

SearchField::SearchField(QWidget* parent) : QLineEdit(parent) {
    setClearButtonEnabled(true);
    setMaxLength(maximumQueryLength);
    icon = addAction(QIcon(), LeadingPosition);
    for (QToolButton* button : findChildren<QToolButton*>())
        button->setAccessibleName(translated(button->defaultAction() == icon ? "Search icon" : "Clear"));
    applyColors();
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) {
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
}

void SearchField::keyPressEvent(QKeyEvent* event) {
    const auto* callback = isComposing ? nullptr : callbackFor(*event);
    if (callback)
        (*callback)();
    else
        QLineEdit::keyPressEvent(event);
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
    isComposing = !event->preeditString().isEmpty();
    QLineEdit::inputMethodEvent(event);
}

void SearchField::focusInEvent(QFocusEvent* event) {
    if (!isFirstResponder) {
        gainFocus(event->reason());
        // What is selected is up to selectAllOnFocus alone.
        QFocusEvent gained(event->type(),
                           isByKeyboard(event->reason()) ? Qt::OtherFocusReason : event->reason());
        QLineEdit::focusInEvent(&gained);
        return;
    }
    QLineEdit::focusInEvent(event);
    if (selectAllOnFocus && event->reason() == Qt::ActiveWindowFocusReason) {
        debugLog("windowDidBecomeKey reselect");
        scheduleSelectAll(1);
    }
}

void SearchField::gainFocus(Qt::FocusReason reason) {
    debugLog("becomeFirstResponder start selectAllOnFocus=", textOf(selectAllOnFocus),
             " shouldSelectAllAfterMouseDown=", textOf(shouldSelectAllAfterMouseDown));
    isFirstResponder = true;
    debugLog("becomeFirstResponder end becameFirstResponder=", textOf(isFirstResponder));
    if (!selectAllOnFocus)
        return;
    const bool isPress = reason == Qt::MouseFocusReason;
    shouldSelectAllAfterMouseDown = isPress && QGuiApplication::mouseButtons() == Qt::LeftButton;
    debugLog("becomeFirstResponder currentEventType=", isPress ? "MouseButtonPress" : "none",
             " isMouseDrivenFocus=", textOf(shouldSelectAllAfterMouseDown));
    if (!shouldSelectAllAfterMouseDown)
        scheduleSelectAll(1);
}

void SearchField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    isComposing = false;
    shouldSelectAllAfterMouseDown = false; // the release may never arrive
    if (!isInterruption(event->reason()))
        isFirstResponder = false;
}

void SearchField::mousePressEvent(QMouseEvent* event) {
    notePress(*event);
    QLineEdit::mousePressEvent(event);
}

void SearchField::mouseDoubleClickEvent(QMouseEvent* event) {
    notePress(*event);
    QLineEdit::mouseDoubleClickEvent(event);
}

void SearchField::notePress(const QMouseEvent& press) {
    if (press.button() != Qt::RightButton)
        ++selectAllRequest; // this press places the caret, for a middle click's paste too
    if (press.button() != Qt::LeftButton)
        return;
    clickCount = clicks.count(press);
    debugLog("mouseDown clickCount=", std::to_string(clickCount),
             " shouldSelectAllAfterMouseDown=", textOf(shouldSelectAllAfterMouseDown));
}

void SearchField::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    if (std::exchange(shouldSelectAllAfterMouseDown, false) && clickCount == 1)
        scheduleSelectAll(2);
}

void SearchField::scheduleSelectAll(int deferrals) {
    QTimer::singleShot(0, this, [this, deferrals, request = selectAllRequest] {
        if (request != selectAllRequest)
            return;
        if (deferrals > 1)
            scheduleSelectAll(deferrals - 1);
        else
            selectWholeText();
    });
}

void SearchField::selectWholeText() {
    if (isComposing) // selecting would end the composition
        return;
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
    if (event->type() == QEvent::PaletteChange && icon)
        applyColors();
}

void SearchField::applyColors() {
    // From the application's palette: the field's own already carries the colour that is set here.
    const QPalette& system = QGuiApplication::palette();
    icon->setIcon(tintedIcon("search", secondaryTextColor(system)));
    QPalette own = palette();
    own.setColor(QPalette::Base, searchFieldColor(system));
    if (own != palette())
        setPalette(own);
}

} // namespace kavendra
