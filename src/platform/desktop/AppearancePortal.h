#pragma once

#include "platform/Desktop.h"
#include "platform/desktop/GLibHandles.h"

#include <functional>
#include <future>

namespace kavendra {

/// What the user prefers on the whole desktop. The defaults stand for no preference.
struct AppearancePreferences {
    Appearance appearance = Appearance::system;
    bool highContrast = false;
    bool reducedMotion = false;
    bool animations = true; ///< GNOME's older setting for motion

    bool operator==(const AppearancePreferences&) const = default;
};

/// The user's preferences from the settings portal (XDG Desktop Portal, org.freedesktop.portal.Settings).
///
/// Changes arrive through the default main context of GLib; use this class on its thread. Qt's event loop
/// runs that context (QEventDispatcherGlib) unless QT_NO_GLIB is set; then the settings are read once and not
/// followed.
class AppearancePortal {
public:
    /// Asks for the settings without waiting. `changed` is called when they have changed after the first call
    /// of preferences(). The answer of a portal that needs longer than 0.1 s, or that starts later, counts as
    /// a change.
    explicit AppearancePortal(std::function<void()> changed);
    ~AppearancePortal();
    AppearancePortal(const AppearancePortal&) = delete;
    AppearancePortal& operator=(const AppearancePortal&) = delete;

    /// Returns the defaults if there is no portal. The first call waits for the answer until 0.1 s after the
    /// construction, so that the first window is painted in its final colours.
    const AppearancePreferences& preferences();

private:
    void subscribe();
    void readAsynchronously();
    void adopt(const AppearancePreferences& preferences);

    std::function<void()> m_changed;
    GObjectHandle<GDBusConnection> m_bus;
    GObjectHandle<GCancellable> m_cancellable; ///< of asynchronous reads
    guint m_subscription = 0;
    guint m_nameWatch = 0;
    std::future<AppearancePreferences> m_firstAnswer; ///< invalid once it was used
    AppearancePreferences m_preferences;
};

} // namespace kavendra
