#include "ui/ClickCounter.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>

#include <cstdlib>

namespace kavendra {

int ClickCounter::count(const QMouseEvent& press) {
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const QPoint position = press.globalPosition().toPoint();
    const QPoint moved = position - m_position;
    const bool isNear = std::abs(moved.x()) <= hints.mouseDoubleClickDistance() &&
                        std::abs(moved.y()) <= hints.mouseDoubleClickDistance();
    const bool isSoon = press.timestamp() - m_time < static_cast<quint64>(hints.mouseDoubleClickInterval());
    m_count = isNear && isSoon ? m_count + 1 : 1;
    m_time = press.timestamp();
    m_position = position;
    return m_count;
}

} // namespace kavendra
