#pragma once

#include "platform/Desktop.h"
#include "platform/desktop/GLibHandles.h"

#include <cstdint>
#include <functional>

namespace kavendra {

/// The light or dark that a person set in the desktop, from the settings portal (XDG Desktop Portal,
/// org.freedesktop.portal.Settings). It is read by Read and not by ReadOne, which older portals lack.
///
/// What happens later is told through the default main context of GLib, on whose thread this must live. Qt
/// iterates that context on Linux: its event dispatcher there is QEventDispatcherGlib, unless somebody sets
/// QT_NO_GLIB; the setting is then read once and not followed.
class ColorSchemePortal {
public:
    /// Reads the setting, for at most a tenth of a second, so that the first window has its colours from the
    /// beginning; a portal that is slower or starts later is listened to when it answers. `changed` is called
    /// whenever preferred() answers differently than before.
    explicit ColorSchemePortal(std::function<void()> changed);
    ~ColorSchemePortal();
    ColorSchemePortal(const ColorSchemePortal&) = delete;
    ColorSchemePortal& operator=(const ColorSchemePortal&) = delete;

    /// Returns `system` while there is no preference and no portal.
    Appearance preferred() const;

private:
    void readLater();
    void adopt(std::uint32_t colorScheme);

    std::function<void()> changed;
    GObjectHandle<GDBusConnection> bus;
    GObjectHandle<GCancellable> reading;
    guint subscription = 0;
    guint watch = 0;
    std::uint32_t scheme = 0;
};

} // namespace kavendra
