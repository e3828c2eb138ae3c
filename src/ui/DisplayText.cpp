#include "ui/DisplayText.h"

#include <QPainter>
#include <QStyle>

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

bool isShownAsMark(QChar character, LineFeeds lineFeeds) {
    const char16_t code = character.unicode();
    if (code == u'\n')
        return lineFeeds == LineFeeds::mark;
    return character.category() == QChar::Other_Control || code == 0x061C || code == 0x200E ||
           code == 0x200F || (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

QString markOf(QChar character) {
    switch (character.unicode()) {
    case u'\t':
        return QStringLiteral("[TAB]");
    case u'\n':
        return QStringLiteral("[LF]");
    case u'\r':
        return QStringLiteral("[CR]");
    default:
        return QStringLiteral("[U+%1]").arg(QString::number(character.unicode(), 16).toUpper(), 4, u'0');
    }
}

} // namespace

QString displayText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString withVisibleMarks(const QString& text, LineFeeds lineFeeds) {
    QString visible;
    visible.reserve(text.size());
    for (const QChar character : text) {
        if (isShownAsMark(character, lineFeeds))
            visible += markOf(character);
        else
            visible += character;
    }
    return visible;
}

QString originalOfVisible(const QString& original, qsizetype begin, qsizetype end) {
    QString part;
    qsizetype position = 0; // in the visible text
    for (const QChar character : original) {
        const qsizetype length = isShownAsMark(character, LineFeeds::keep) ? markOf(character).size() : 1;
        if (position < end && position + length > begin)
            part += character;
        position += length;
    }
    return part;
}

QString singleLine(std::string_view text) {
    return withVisibleMarks(displayText(shortened(text, maximumLineBytes)));
}

QString withoutMiddle(const QString& text, qsizetype maximumLength) {
    if (text.size() <= maximumLength)
        return text;
    return text.left(maximumLength / 2) + u'…' + text.right(maximumLength / 2);
}

QTextOption::WrapMode wrapMode(const QString& text) {
    // Qt looks for the end of a word again in every line of it, which takes quadratic time.
    constexpr qsizetype longestSearchedWord = 4000;
    qsizetype length = 0;
    for (const QChar character : text) {
        length = character.isSpace() ? 0 : length + 1;
        if (length > longestSearchedWord)
            return QTextOption::WrapAnywhere;
    }
    return QTextOption::WrapAtWordBoundaryOrAnywhere;
}

Qt::LayoutDirection naturalDirection(const QString& text) {
    return text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

void drawLine(QPainter& painter, const QRect& rect, Qt::Alignment alignment, const QString& line,
              Qt::LayoutDirection textDirection) {
    const Qt::LayoutDirection layoutDirection = painter.layoutDirection();
    const auto visual = QStyle::visualAlignment(layoutDirection, alignment);
    // Not Qt::TextForceLeftToRight, which also keeps right-to-left letters from running to the left.
    painter.setLayoutDirection(textDirection);
    painter.drawText(rect, static_cast<int>(visual) | Qt::TextSingleLine, line);
    painter.setLayoutDirection(layoutDirection);
}

} // namespace kavendra
