#include "ui/DisplayText.h"

#include <QPainter>
#include <QStringDecoder>
#include <QStyle>

namespace kavendra {

namespace {

/// Wider than any column; bounds the time for the layout.
constexpr std::size_t maximumLineBytes = 2000;

bool hasVisibleMark(QChar character, LineFeeds lineFeeds) {
    const char16_t code = character.unicode();
    if (code == u'\n')
        return lineFeeds == LineFeeds::mark;
    return character.category() == QChar::Other_Control || code == 0x061C || code == 0x200E ||
           code == 0x200F || (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

QString visibleMark(QChar character) {
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

QString withVisibleMarks(const QString& text, LineFeeds lineFeeds) {
    QString visible;
    visible.reserve(text.size());
    for (const QChar character : text) {
        if (hasVisibleMark(character, lineFeeds))
            visible += visibleMark(character);
        else
            visible += character;
    }
    return visible;
}

QString originalOfVisible(const QString& original, qsizetype begin, qsizetype end) {
    QString part;
    qsizetype position = 0; // in the visible text
    for (const QChar character : original) {
        const qsizetype length =
            hasVisibleMark(character, LineFeeds::keep) ? visibleMark(character).size() : 1;
        if (position < end && position + length > begin)
            part += character;
        position += length;
    }
    return part;
}

QString singleLine(std::string_view text) {
    // Unlike QString::fromUtf8, a decoder adds no replacement character for a sequence that the limit cuts.
    QStringDecoder decode(QStringDecoder::Utf8);
    return withVisibleMarks(decode(QByteArrayView(text.substr(0, maximumLineBytes))));
}

QString withoutMiddle(const QString& text, qsizetype maximumLength) {
    if (text.size() <= maximumLength)
        return text;
    return text.left(maximumLength / 2) + u'…' + text.right(maximumLength / 2);
}

QTextOption::WrapMode wrapMode(const QString& text) {
    // Qt searches for the end of a word again in each of its lines: quadratic time for a long word.
    constexpr qsizetype maximumWordLength = 4000;
    qsizetype length = 0;
    for (const QChar character : text) {
        length = character.isSpace() ? 0 : length + 1;
        if (length > maximumWordLength)
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
    // Qt::TextForceLeftToRight would lay out right-to-left letters left to right, too.
    painter.setLayoutDirection(textDirection);
    painter.drawText(rect, static_cast<int>(visual) | Qt::TextSingleLine, line);
    painter.setLayoutDirection(layoutDirection);
}

} // namespace kavendra
