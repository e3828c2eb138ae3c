#pragma once

#include <QMessageBox>

#include <optional>

namespace kavendra {

/// A message above buttons. It never blocks: the window's state says whether it is up, and how it was
/// answered is reported back there.
class MessageDialog : public QMessageBox {
public:
    explicit MessageDialog(QWidget* parent);

protected:
    /// Shows a message, in the place of the one that is up; without one, closes.
    void showMessage(const std::optional<QString>& message);

    /// Adds a button with that title.
    void offer(StandardButton button, const QString& title);
};

} // namespace kavendra
