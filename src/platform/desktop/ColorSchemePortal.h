#pragma once

#include "platform/Desktop.h"
#include "platform/desktop/GLibHandles.h"

#include <cstdint>
#include <functional>
#include <future>

namespace kavendra {

/// The user's preference for light or dark, from the settings portal (XDG Desktop Portal,
/// org.freedesktop.portal.Settings). Uses the method Read, because older portals lack ReadOne.
///
/// Changes arrive through the default main context of GLib; use this class on its thread. Qt's event loop
/// runs that context (QEventDispatcherGlib) unless QT_NO_GLIB is set; then the setting is read once and not
/// followed.
class ColorSchemePortal {
public:
    /// Asks for the setting without waiting. `changed` is called when it has changed after the first call of
    /// preferred(). The answer of a portal that needs longer than 0.1 s, or that starts later, counts as a
    /// change.
    explicit ColorSchemePortal(std::function<void()> changed);
    ~ColorSchemePortal();
    ColorSchemePortal(const ColorSchemePortal&) = delete;
    ColorSchemePortal& operator=(const ColorSchemePortal&) = delete;

    /// Returns `system` if there is no preference or no portal. The first call waits for the answer until 0.1
    /// s after the construction, so that the first window is painted in its final colours.
    Appearance preferred();

private:
    void subscribe();
    void readAsynchronously();
    void adopt(std::uint32_t colorScheme);

    std::function<void()> m_changed;
    GObjectHandle<GDBusConnection> m_bus;
    GObjectHandle<GCancellable> m_cancellable; ///< of asynchronous reads
    guint m_subscription = 0;
    guint m_nameWatch = 0;
    std::future<std::uint32_t> m_firstAnswer; ///< invalid once it was used
    std::uint32_t m_colorScheme = 0;          ///< as the portal defines it: 0 no preference, 1 dark, 2 light
};

} // namespace kavendra
