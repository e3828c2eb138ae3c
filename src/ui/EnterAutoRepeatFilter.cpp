#include "ui/EnterAutoRepeatFilter.h"

#include <QKeyEvent>

namespace kavendra {

namespace {

/// X11 sends a repeat as a release and a press with the same timestamp. If the focus moved in between, as to
/// a dialog, Qt does not mark the press as a repeat; it is recognised by this minimum pause, in milliseconds.
constexpr quint64 minimumPause = 20;

} // namespace

bool EnterAutoRepeatFilter::eventFilter(QObject* watched, QEvent* event) {
    const bool isPress = event->type() == QEvent::KeyPress;
    // Windows receive key events before widgets do.
    if (!watched->isWindowType() || (!isPress && event->type() != QEvent::KeyRelease))
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return false;
    if (isPress)
        return key->isAutoRepeat() || (m_lastRelease > 0 && key->timestamp() - m_lastRelease < minimumPause);
    m_lastRelease = key->timestamp();
    return false;
}

} // namespace kavendra
