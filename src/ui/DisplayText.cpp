#include "ui/DisplayText.h"

namespace kavendra {

namespace {

// Wider than any column. Laying out a text costs time in proportion to its length.
constexpr std::size_t maximumLineBytes = 2000;

constexpr qsizetype breakEvery = 40;
constexpr QChar zeroWidthSpace(0x200B);

std::string_view shortened(std::string_view text, std::size_t maximum) {
    if (text.size() <= maximum)
        return text;
    std::size_t end = maximum;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return text.substr(0, end);
}

} // namespace

QString displayText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString singleLine(std::string_view text) {
    QString line = displayText(shortened(text, maximumLineBytes));
    for (QChar& character : line)
        if (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator)
            character = u' ';
    return line;
}

QString breakable(QString text) {
    qsizetype sinceSpace = 0;
    for (qsizetype position = 0; position < text.size(); ++position) {
        sinceSpace = text[position].isSpace() ? 0 : sinceSpace + 1;
        if (sinceSpace >= breakEvery && !text[position].isHighSurrogate()) {
            text.insert(++position, zeroWidthSpace);
            sinceSpace = 0;
        }
    }
    return text;
}

QString toolTipText(const QString& text) {
    return text.isEmpty() ? text : "<qt>" + breakable(text).toHtmlEscaped() + "</qt>";
}

} // namespace kavendra
