#pragma once

#include "platform/Desktop.h"
#include "platform/desktop/GLibHandles.h"

#include <cstdint>
#include <functional>

namespace kavendra {

/// The user's preference for light or dark, from the settings portal (XDG Desktop Portal,
/// org.freedesktop.portal.Settings). Uses the method Read, because older portals lack ReadOne.
///
/// Changes arrive through the default main context of GLib; use this class on its thread. Qt's event loop
/// runs that context (QEventDispatcherGlib) unless QT_NO_GLIB is set; then the setting is read once and not
/// followed.
class ColorSchemePortal {
public:
    /// Waits for the setting for at most 0.1 s, so that the first window is painted in its final colours. The
    /// answer of a slower portal, or of one that starts later, counts as a change. `changed` is called when
    /// the setting has changed.
    explicit ColorSchemePortal(std::function<void()> changed);
    ~ColorSchemePortal();
    ColorSchemePortal(const ColorSchemePortal&) = delete;
    ColorSchemePortal& operator=(const ColorSchemePortal&) = delete;

    /// Returns `system` if there is no preference or no portal.
    Appearance preferred() const;

private:
    void subscribe();
    void readNow();
    void readAsynchronously();
    void adopt(std::uint32_t colorScheme);

    std::function<void()> m_changed;
    GObjectHandle<GDBusConnection> m_bus;
    GObjectHandle<GCancellable> m_cancellable; ///< of asynchronous reads
    guint m_subscription = 0;
    guint m_nameWatch = 0;
    std::uint32_t m_colorScheme = 0; ///< as the portal defines it: 0 no preference, 1 dark, 2 light
};

} // namespace kavendra
