#include "ui/ErrorDialog.h"

#include "ui/DisplayText.h"
#include "ui/Translation.h"

namespace kavendra {

ErrorDialog::ErrorDialog(QWidget* parent) : MessageDialog(parent) {
    setObjectName("errorDialog");
    offer(QDialogButtonBox::Ok, translated("OK"));
    connect(this, &QDialog::finished, this, [this] { onDismiss(); });
}

void ErrorDialog::show(const std::optional<std::string>& message) {
    // Its texts are English, and name paths.
    showMessage(message ? std::optional(displayText(*message)) : std::nullopt, Qt::LeftToRight);
}

} // namespace kavendra
