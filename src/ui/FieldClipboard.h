#pragma once

#include "platform/Desktop.h"

#include <QObject>

#include <functional>
#include <string>

class QLineEdit;
class QPoint;

namespace kavendra {

/// Pastes into a line edit and shows its context menu. QLineEdit itself asks the program that owns the
/// clipboard for both and waits, so that one that hangs would freeze the window.
class FieldClipboard final : public QObject {
public:
    using Receiver = std::function<void(const std::string& text)>;

    /// Becomes a child of `field`. `read` is called to read a clipboard; it may call its receiver later.
    FieldClipboard(QLineEdit& field, std::function<void(Clipboard, Receiver)> read);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void paste(Clipboard clipboard);
    void showMenu(const QPoint& globalPosition);

    QLineEdit& m_field;
    std::function<void(Clipboard, Receiver)> m_read;
};

} // namespace kavendra
