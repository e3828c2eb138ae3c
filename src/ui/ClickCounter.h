#pragma once

#include <QPoint>

class QMouseEvent;

namespace kavendra {

/// Counts presses that follow each other quickly at one place. Qt itself reports no more than a double click,
/// and the press after it as a single one.
class ClickCounter final {
public:
    /// Returns 1 for a press of its own, else one more than for the press before it. Interval and distance
    /// are those of QStyleHints for double clicks. Call it for every press of the button, in order.
    int count(const QMouseEvent& press);

private:
    int m_count = 0;
    quint64 m_time = 0; ///< of the last press, in milliseconds of the window system
    QPoint m_position;  ///< of the last press, on the screen
};

} // namespace kavendra
