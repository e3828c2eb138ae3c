#pragma once

#include <QString>
#include <QTextOption>

#include <string_view>

class QPainter;
class QRect;

namespace kavendra {

/// Returns UTF-8 text for a widget; bytes that are not UTF-8 show as replacement characters.
QString displayText(std::string_view text);

/// What becomes of the line feeds of a text that is made visible.
enum class LineFeeds { mark, keep };

/// Returns `text` with a visible mark ("[TAB]", "[LF]", "[CR]", "[U+202E]") in the place of every control
/// character, line or paragraph separator and character with the Unicode property Bidi_Control: they are
/// invisible and change how the rest appears. Joiners stay, because scripts need them.
QString withVisibleMarks(const QString& text, LineFeeds lineFeeds = LineFeeds::mark);

/// Returns the part of `original` that withVisibleMarks shows, keeping line feeds, from `begin` up to `end`
/// (UTF-16 positions in its result). A mark that is partly in the range stands for its whole character.
QString originalOfVisible(const QString& original, qsizetype begin, qsizetype end);

/// Returns the beginning of a text on one line, with visible marks: no more than a widget could show of it is
/// laid out.
QString singleLine(std::string_view text);

/// Returns `text`, of a longer one its two ends with an ellipsis between them: a message begins with what
/// failed and ends with why. `maximumLength` is in UTF-16 units.
QString withoutMiddle(const QString& text, qsizetype maximumLength);

/// Returns how a text is wrapped in which long words are broken where a line ends.
QTextOption::WrapMode wrapMode(const QString& text);

/// Returns the direction of the first letter of `text` that has one, left to right without one.
Qt::LayoutDirection naturalDirection(const QString& text);

/// Draws one line of text in its own direction, aligned as in a widget that has the painter's direction.
void drawLine(QPainter& painter, const QRect& rect, Qt::Alignment alignment, const QString& line,
              Qt::LayoutDirection textDirection);

} // namespace kavendra
