#pragma once

#include "ui/MessageDialog.h"

#include <functional>
#include <optional>
#include <string>

namespace kavendra {

/// The dialog that a failure brings up, with one button.
class ErrorDialog final : public MessageDialog {
public:
    explicit ErrorDialog(QWidget* parent);

    std::function<void()> onDismiss;

    /// Shows a message, in the place of the one that is up; without one, closes.
    void show(const std::optional<std::string>& message);
};

} // namespace kavendra
