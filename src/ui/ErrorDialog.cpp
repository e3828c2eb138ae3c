#include "ui/ErrorDialog.h"

#include "ui/DisplayText.h"
#include "ui/Translation.h"

namespace kavendra {

ErrorDialog::ErrorDialog(QWidget* parent) : MessageDialog(parent) {
    setObjectName("errorDialog");
    offer(Ok, translated("OK"));
    connect(this, &QDialog::finished, this, [this] { onDismiss(); });
}

void ErrorDialog::show(const std::optional<std::string>& message) {
    showMessage(message ? std::optional(displayText(*message)) : std::nullopt);
}

} // namespace kavendra
