#include "ui/SearchField.h"

#include "ui/Colors.h"
#include "ui/DisplayText.h"
#include "ui/Icon.h"

#include <QAction>
#include <QInputMethodEvent>
#include <QKeyEvent>

namespace kavendra {

SearchField::SearchField(QWidget* parent) : QLineEdit(parent) {
    setClearButtonEnabled(true);
    icon = addAction(QIcon(), LeadingPosition);
    tintIcon();
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) {
        const std::string value = text.toStdString();
        onDebugLog("SearchField controlTextDidChange value=" + value);
        onTextChange(value);
    });
}

void SearchField::showText(const std::string& text) {
    const QString shown = kavendra::displayText(text);
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
        // A key that is held down repeats; a program is to start once.
        return event.isAutoRepeat() ? nullptr : &onSubmit;
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

void SearchField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    isComposing = false;
}

void SearchField::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && icon)
        tintIcon();
}

void SearchField::tintIcon() {
    icon->setIcon(tintedIcon("search", secondaryTextColor(palette())));
}

} // namespace kavendra
