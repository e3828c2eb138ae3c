#include "ui/ConfirmationDialog.h"

#include "ui/Translation.h"

namespace kavendra {

ConfirmationDialog::ConfirmationDialog(QWidget* parent) : MessageDialog(parent) {
    setObjectName("confirmationDialog");
    offer(Yes, translated("Yes"));
    offer(No, translated("No"));
    setDefaultButton(Yes);
    setEscapeButton(No);
    connect(this, &QDialog::finished, this, [this](int answer) { answer == Yes ? onConfirm() : onCancel(); });
}

void ConfirmationDialog::show(const std::optional<StartupRegistrationAction>& action) {
    if (action)
        showMessage(translated(std::string(confirmationMessage(*action)).c_str()));
    else
        showMessage(std::nullopt);
}

} // namespace kavendra
