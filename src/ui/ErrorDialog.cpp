#include "ui/ErrorDialog.h"

#include "ui/DisplayText.h"

namespace kavendra {

namespace {

constexpr qsizetype maximumMessageLength = 1000;
constexpr qsizetype breakEvery = 40;

/// A message that a dialog of bearable size can hold: a long one is cut, and a long word can be broken (at a
/// zero width space), where a line would otherwise be as wide as the word.
QString dialogText(const std::string& message) {
    QString text = displayText(message);
    if (text.size() > maximumMessageLength)
        text = text.left(maximumMessageLength) + u'…';
    qsizetype sinceSpace = 0;
    for (qsizetype position = 0; position < text.size(); ++position) {
        sinceSpace = text[position].isSpace() ? 0 : sinceSpace + 1;
        if (sinceSpace == breakEvery && !text[position].isHighSurrogate()) {
            text.insert(++position, QChar(0x200B));
            sinceSpace = 0;
        }
    }
    return text;
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
