#include "ui/ErrorDialog.h"

#include "ui/DisplayText.h"

namespace kavendra {

namespace {

// Of a longer message its middle is left out: it begins with what failed and ends with why.
constexpr qsizetype shownOfBeginning = 700;
constexpr qsizetype shownOfEnd = 300;

QString dialogText(const std::string& message) {
    QString text = displayText(message);
    if (text.size() > shownOfBeginning + shownOfEnd)
        text = text.left(shownOfBeginning) + u'…' + text.right(shownOfEnd);
    return breakable(std::move(text));
}

} // namespace

ErrorDialog::ErrorDialog(QWidget* parent) : QMessageBox(parent) {
    setIcon(Warning);
    setWindowTitle(QStringLiteral("kavendra"));
    setTextFormat(Qt::PlainText);
    setStandardButtons(Ok);
    connect(this, &QDialog::finished, this, [this] { onDismiss(); });
}

void ErrorDialog::show(const std::optional<std::string>& message) {
    if (message) {
        if (const QString shown = dialogText(*message); shown != text())
            setText(shown);
        if (!isVisible())
            open();
    } else if (isVisible()) {
        hide();
    }
}

} // namespace kavendra
