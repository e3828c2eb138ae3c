#pragma once

#include <Qt>

class QPoint;
class QRect;
class QString;
class QWidget;

namespace kavendra {

/// Shows a plain text as the tooltip of `area`, a part of the widget in its coordinates, until the pointer
/// leaves the area or a key or button is pressed; an empty text hides the tooltip. Unlike QToolTip, it breaks
/// long words between any two characters. A text that is larger than the screen is cut at its end.
/// `globalPosition` is the pointer's position on the screen.
void showToolTip(QWidget& widget, const QPoint& globalPosition, const QRect& area, const QString& text,
                 Qt::LayoutDirection textDirection);

} // namespace kavendra
