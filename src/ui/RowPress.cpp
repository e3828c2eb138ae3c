#include "ui/RowPress.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

#include <utility>

namespace kavendra {

namespace {

bool isEscape(const QEvent& event) {
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

bool isEnter(const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

RowPress::RowPress(QWidget& viewport) : m_viewport(viewport) {}

void RowPress::begin(std::optional<int> row) {
    end();
    m_isActive = true;
    m_row = row;
    QCoreApplication::instance()->installEventFilter(this);
}

void RowPress::moveTo(std::optional<int> row) {
    if (row != m_row)
        cancel();
}

std::optional<int> RowPress::release(std::optional<int> row) {
    moveTo(row);
    const std::optional<int> launched = m_row;
    if (launched)
        std::erase_if(m_heldEvents, [](const HeldEvent& held) { return isEnter(*held.event); });
    end();
    return launched;
}

void RowPress::end() {
    if (!std::exchange(m_isActive, false))
        return;
    m_row.reset();
    // The filter stays until the delivery: key events that are queued already must not overtake the held
    // ones.
    if (m_heldEvents.empty())
        QCoreApplication::instance()->removeEventFilter(this);
    else
        QMetaObject::invokeMethod(this, [this] { deliverHeldEvents(); }, Qt::QueuedConnection);
}

void RowPress::deliverHeldEvents() {
    if (m_isActive)
        return; // the next press, which has begun, delivers them when it ends
    QCoreApplication::instance()->removeEventFilter(this);
    for (const HeldEvent& held : std::exchange(m_heldEvents, {}))
        if (held.receiver)
            QCoreApplication::sendEvent(held.receiver, held.event.get());
}

// Key events arrive here on their way to the window, input method events on their way to the focus widget.
bool RowPress::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        if (m_isActive && isEscape(*event)) {
            cancel();
            return true;
        }
        [[fallthrough]];
    case QEvent::InputMethod:
        m_heldEvents.push_back({watched, std::unique_ptr<QEvent>(event->clone())});
        return true;
    case QEvent::MouseMove:
        if (!static_cast<QMouseEvent*>(event)->buttons().testFlag(Qt::LeftButton))
            end();
        return false;
    case QEvent::WindowDeactivate:
    case QEvent::WindowBlocked:
        if (watched == &m_viewport)
            end();
        return false;
    default:
        return false;
    }
}

} // namespace kavendra
