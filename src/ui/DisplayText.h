#pragma once

#include <QString>
#include <QTextOption>

#include <string_view>

class QPainter;
class QRect;

/// How texts from data files, settings and the system are shown: bounded, with nothing hidden, in the right
/// direction.
namespace kavendra {

/// Whether line feeds are kept or also replaced by a visible mark.
enum class LineFeeds { mark, keep };

/// Returns `text` with a visible mark such as "[TAB]", "[LF]" or "[U+202E]" in place of every control
/// character, line or paragraph separator and character with the Unicode property Bidi_Control, because these
/// are invisible and change how the rest is shown. Joiners are kept: scripts need them.
QString withVisibleMarks(const QString& text, LineFeeds lineFeeds = LineFeeds::mark);

/// Returns the part of `original` that is shown between the positions `begin` and `end` (in UTF-16 units) of
/// withVisibleMarks(original, LineFeeds::keep). A mark that is partly in the range yields its character.
QString originalOfVisible(const QString& original, qsizetype begin, qsizetype end);

/// Returns the beginning of a UTF-8 text as one line with visible marks. It is longer than a widget can show
/// and bounded, because layout takes time in proportion to the length. Invalid bytes become U+FFFD.
QString singleLine(std::string_view text);

/// Returns `text` with its middle replaced by an ellipsis if it is longer than `maximumLength` UTF-16 units:
/// a message begins with what failed and ends with the reason.
QString withoutMiddle(const QString& text, qsizetype maximumLength);

/// Returns the wrap mode that breaks long words, in an affordable time for this text.
QTextOption::WrapMode wrapMode(const QString& text);

/// Returns the direction of the first strongly directional letter of `text`, left to right without one.
Qt::LayoutDirection naturalDirection(const QString& text);

/// Draws one line of text in the direction `textDirection`, aligned by the painter's layout direction.
void drawLine(QPainter& painter, const QRect& rect, Qt::Alignment alignment, const QString& line,
              Qt::LayoutDirection textDirection);

} // namespace kavendra
