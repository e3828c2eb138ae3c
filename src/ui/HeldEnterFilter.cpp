#include "ui/HeldEnterFilter.h"

#include <QKeyEvent>

namespace kavendra {

namespace {

/// A repeat arrives as a release and a press of the same moment. Where the focus has moved meanwhile, as to a
/// dialog, X11 does not mark it as one; no finger is as fast as this, in milliseconds.
constexpr unsigned long long shortestPause = 20;

} // namespace

bool HeldEnterFilter::eventFilter(QObject* watched, QEvent* event) {
    const bool isPress = event->type() == QEvent::KeyPress;
    if (!watched->isWindowType() || (!isPress && event->type() != QEvent::KeyRelease))
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return false;
    if (isPress)
        return key->isAutoRepeat() || (lastRelease > 0 && key->timestamp() - lastRelease < shortestPause);
    lastRelease = key->timestamp();
    return false;
}

} // namespace kavendra
