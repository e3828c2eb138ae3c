#pragma once

#include "config/LaunchAtLogin.h"
#include "ui/MessageDialog.h"

#include <functional>

namespace kavendra {

/// The dialog that asks before launch at login is changed.
class ConfirmationDialog final : public MessageDialog {
public:
    explicit ConfirmationDialog(QWidget* parent);

    std::function<void()> onConfirm;
    std::function<void()> onCancel; ///< "No", and whatever else dismisses the dialog

    /// Shows the question of an action; without one, closes.
    void show(const std::optional<StartupRegistrationAction>& action);
};

} // namespace kavendra
