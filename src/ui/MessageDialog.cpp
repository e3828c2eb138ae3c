#include "ui/MessageDialog.h"

#include "ui/DisplayText.h"
#include "ui/Icon.h"

#include <QPushButton>

namespace kavendra {

namespace {

// Of a longer message its middle is left out: it begins with what failed and ends with why.
constexpr qsizetype shownOfBeginning = 700;
constexpr qsizetype shownOfEnd = 300;

QString dialogText(QString message) {
    if (message.size() > shownOfBeginning + shownOfEnd)
        message = message.left(shownOfBeginning) + u'…' + message.right(shownOfEnd);
    return breakable(std::move(message));
}

constexpr int iconSide = 48;

} // namespace

MessageDialog::MessageDialog(QWidget* parent) : QMessageBox(parent) {
    setWindowTitle(QStringLiteral("kavendra"));
    setTextFormat(Qt::PlainText);
    setIconPixmap(applicationIcon().pixmap(iconSide));
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
}

void MessageDialog::offer(StandardButton button, const QString& title) {
    QPushButton* made = addButton(button);
    made->setText(title);
    made->setIcon(QIcon()); // a word is enough
}

void MessageDialog::showMessage(const std::optional<QString>& message) {
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
