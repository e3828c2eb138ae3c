#include "ui/DisplayText.h"

namespace kavendra {

namespace {

// Wider than any column. Laying out a text costs time in proportion to its length.
constexpr std::size_t maximumLineBytes = 2000;

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

} // namespace kavendra
