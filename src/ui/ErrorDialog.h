#pragma once

#include <QMessageBox>

#include <functional>
#include <optional>
#include <string>

namespace kavendra {

/// The dialog that a failure brings up, with one button. It never blocks: the window's state says whether it
/// is up, and dismissing it is reported back there.
class ErrorDialog final : public QMessageBox {
public:
    explicit ErrorDialog(QWidget* parent);

    std::function<void()> onDismiss;

    /// Shows a message, in the place of the one that is up; without one, closes.
    void show(const std::optional<std::string>& message);
};

} // namespace kavendra
