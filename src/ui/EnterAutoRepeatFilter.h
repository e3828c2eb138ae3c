#pragma once

#include <QObject>

namespace kavendra {

/// Drops the auto-repeat of Enter, so that holding the key launches an item once and does not dismiss the
/// dialog that reports its failure. Install it on the application.
class EnterAutoRepeatFilter final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    quint64 m_lastRelease = 0; ///< timestamp of the window system, in milliseconds
};

} // namespace kavendra
