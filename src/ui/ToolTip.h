#pragma once

#include <Qt>

class QPoint;
class QRect;
class QString;
class QWidget;

namespace kavendra {

/// Shows all of a plain text as the tooltip of a part of a widget, until the pointer leaves that part or
/// something is pressed. Long words are broken between any two characters, which Qt's own tooltips cannot do;
/// what no screen could show is cut at its end. An empty text hides the tooltip.
/// `globalPosition` is the pointer's, `area` is in the widget's coordinates.
void showToolTip(QWidget& widget, const QPoint& globalPosition, const QRect& area, const QString& text,
                 Qt::LayoutDirection textDirection);

} // namespace kavendra
