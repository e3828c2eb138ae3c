#include "ui/ConfirmationDialog.h"

#include "ui/DisplayText.h"
#include "ui/Translation.h"

namespace kavendra {

ConfirmationDialog::ConfirmationDialog(QWidget* parent) : MessageDialog(parent) {
    setObjectName("confirmationDialog");
    offer(QDialogButtonBox::Yes, translated("Yes"));
    offer(QDialogButtonBox::No, translated("No"));
    connect(this, &QDialog::finished, this,
            [this](int answer) { answer == Accepted ? onConfirm() : onCancel(); });
}

void ConfirmationDialog::show(const std::optional<StartupRegistrationAction>& action) {
    const std::optional<QString> question =
        action ? std::optional(translated(std::string(confirmationMessage(*action)).c_str())) : std::nullopt;
    showMessage(question, naturalDirection(question.value_or(QString())));
}

} // namespace kavendra
