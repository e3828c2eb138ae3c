#pragma once

#include <QObject>

namespace kavendra {

/// Passes over the repeats of a held Enter, wherever they go: a program is to start once, and a failure's
/// dialog is not to be dismissed by the key that brought it up. To be installed on the application.
class HeldEnterFilter final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    unsigned long long lastRelease = 0; ///< in milliseconds of the window system
};

} // namespace kavendra
