#include "ui/FieldClipboard.h"

#include "ui/Theme.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>

namespace kavendra {

FieldClipboard::FieldClipboard(QLineEdit& field, std::function<void(Clipboard, Receiver)> read)
    : QObject(&field), m_field(field), m_read(std::move(read)) {
    field.installEventFilter(this);
}

bool FieldClipboard::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (!key.matches(QKeySequence::Paste))
            return false;
        // Ctrl+Shift+Insert is X11's key for the selected text.
        const bool isSelection = key.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
        paste(isSelection ? Clipboard::selected : Clipboard::copied);
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        const bool pastes = static_cast<const QMouseEvent&>(*event).button() == Qt::MiddleButton &&
                            QApplication::clipboard()->supportsSelection();
        if (pastes) {
            m_field.deselect();
            paste(Clipboard::selected);
        }
        return pastes;
    }
    if (event->type() == QEvent::ContextMenu) {
        showMenu(static_cast<const QContextMenuEvent&>(*event).globalPos());
        return true;
    }
    return false;
}

void FieldClipboard::paste(Clipboard clipboard) {
    m_read(clipboard, [field = QPointer(&m_field)](const std::string& text) {
        if (field && !text.empty())
            field->insert(QString::fromStdString(text));
    });
}

// The entries and texts of QLineEdit's own menu, but Paste is always enabled.
void FieldClipboard::showMenu(const QPoint& globalPosition) {
    auto* menu = new QMenu(&m_field);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setPalette(menuPalette(m_field.palette()));
    const auto add = [&](const char* title, QKeySequence::StandardKey key, bool isEnabled, auto action) {
        QAction* entry = menu->addAction(QCoreApplication::translate("QLineEdit", title), &m_field, action);
        entry->setShortcut(key);
        entry->setShortcutVisibleInContextMenu(true);
        entry->setEnabled(isEnabled);
    };
    const bool hasSelection = m_field.hasSelectedText();
    add("&Undo", QKeySequence::Undo, m_field.isUndoAvailable(), &QLineEdit::undo);
    add("&Redo", QKeySequence::Redo, m_field.isRedoAvailable(), &QLineEdit::redo);
    menu->addSeparator();
    add("Cu&t", QKeySequence::Cut, hasSelection, &QLineEdit::cut);
    add("&Copy", QKeySequence::Copy, hasSelection, &QLineEdit::copy);
    add("&Paste", QKeySequence::Paste, true, [this] { paste(Clipboard::copied); });
    add("Delete", QKeySequence::UnknownKey, hasSelection, &QLineEdit::del);
    menu->addSeparator();
    add("Select All", QKeySequence::SelectAll, !m_field.text().isEmpty(), &QLineEdit::selectAll);
    menu->popup(globalPosition);
}

} // namespace kavendra
