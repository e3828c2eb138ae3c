#include "platform/desktop/AppearancePortal.h"

#include "platform/desktop/SessionBus.h"

#include <cstdint>
#include <string_view>
#include <utility>

namespace kavendra {

namespace {

constexpr const char* portalName = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* portalInterface = "org.freedesktop.portal.Settings";
constexpr const char* appearanceGroup = "org.freedesktop.appearance";
constexpr const char* gnomeGroup = "org.gnome.desktop.interface";

constexpr int firstAnswerTimeoutMilliseconds = 100;

/// A setting whose value is a uint32 or, as 0 or 1, a boolean.
struct Setting {
    const char* group;
    const char* key;
    void (*apply)(AppearancePreferences& preferences, std::uint32_t value);
};

constexpr Setting settings[] = {
    {appearanceGroup, "color-scheme",
     [](AppearancePreferences& preferences, std::uint32_t value) {
         preferences.appearance = value == 1   ? Appearance::dark
                                  : value == 2 ? Appearance::light
                                               : Appearance::system;
     }},
    {appearanceGroup, "contrast",
     [](AppearancePreferences& preferences, std::uint32_t value) { preferences.highContrast = value == 1; }},
    {appearanceGroup, "reduced-motion",
     [](AppearancePreferences& preferences, std::uint32_t value) { preferences.reducedMotion = value == 1; }},
    {gnomeGroup, "enable-animations",
     [](AppearancePreferences& preferences, std::uint32_t value) { preferences.animations = value != 0; }},
};

/// Applies a setting with its value, which may be inside any number of variants. Other settings and values of
/// other types change nothing.
void apply(AppearancePreferences& preferences, std::string_view group, std::string_view key,
           GVariantHandle value) {
    while (value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_VARIANT))
        value.reset(g_variant_get_variant(value.get()));
    for (const Setting& setting : settings) {
        if (group != setting.group || key != setting.key)
            continue;
        if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_UINT32))
            setting.apply(preferences, g_variant_get_uint32(value.get()));
        else if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN))
            setting.apply(preferences, g_variant_get_boolean(value.get()) ? 1 : 0);
    }
}

/// Arguments of ReadAll, which portals of all versions have.
GVariant* readArguments() {
    const char* const groups[] = {appearanceGroup, gnomeGroup, nullptr};
    return g_variant_new("(^as)", groups);
}

/// Returns the preferences in an answer of ReadAll; the defaults for an answer of another type.
AppearancePreferences preferencesIn(GVariant* reply) {
    AppearancePreferences preferences;
    if (!g_variant_is_of_type(reply, G_VARIANT_TYPE("(a{sa{sv}})")))
        return preferences;
    GVariantIter* groups = nullptr;
    GVariantIter* values = nullptr;
    const char* group = nullptr;
    const char* key = nullptr;
    GVariant* value = nullptr;
    g_variant_get(reply, "(a{sa{sv}})", &groups);
    while (g_variant_iter_loop(groups, "{&sa{sv}}", &group, &values))
        while (g_variant_iter_next(values, "{&sv}", &key, &value))
            apply(preferences, group, key, GVariantHandle(value));
    g_variant_iter_free(groups);
    return preferences;
}

/// Waits for the answer for at most 0.1 s; returns the defaults when there is none.
AppearancePreferences readNow(GDBusConnection* bus) {
    const GVariantHandle reply(g_dbus_connection_call_sync(
        bus, portalName, portalPath, portalInterface, "ReadAll", readArguments(), nullptr,
        G_DBUS_CALL_FLAGS_NONE, firstAnswerTimeoutMilliseconds, nullptr, nullptr));
    return reply ? preferencesIn(reply.get()) : AppearancePreferences();
}

/// Applies a SettingChanged signal.
void applySignal(AppearancePreferences& preferences, GVariant* parameters) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")))
        return;
    const char* group = nullptr;
    const char* key = nullptr;
    g_variant_get(parameters, "(&s&sv)", &group, &key, nullptr);
    apply(preferences, group, key, GVariantHandle(g_variant_get_child_value(parameters, 2)));
}

} // namespace

// The signal and the name watch are set up before the first read, so no change is missed between them. The
// name watch also reports a portal that runs already, and the read that follows covers one too slow for
// the first.
AppearancePortal::AppearancePortal(std::function<void()> changed)
    : m_changed(std::move(changed)), m_bus(sessionBus()), m_cancellable(g_cancellable_new()) {
    if (!m_bus)
        return;
    subscribe();
    m_firstAnswer = std::async([bus = m_bus.get()] { return readNow(bus); });
}

AppearancePortal::~AppearancePortal() {
    g_cancellable_cancel(m_cancellable.get());
    if (m_nameWatch != 0)
        g_bus_unwatch_name(m_nameWatch);
    if (m_subscription != 0)
        g_dbus_connection_signal_unsubscribe(m_bus.get(), m_subscription);
}

void AppearancePortal::subscribe() {
    m_subscription = g_dbus_connection_signal_subscribe(
        m_bus.get(), portalName, portalInterface, "SettingChanged", portalPath, nullptr,
        G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* parameters,
           gpointer data) {
            auto* self = static_cast<AppearancePortal*>(data);
            AppearancePreferences changed = self->preferences();
            applySignal(changed, parameters);
            self->adopt(changed);
        },
        this, nullptr);
    m_nameWatch = g_bus_watch_name_on_connection(
        m_bus.get(), portalName, G_BUS_NAME_WATCHER_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, gpointer self) {
            static_cast<AppearancePortal*>(self)->readAsynchronously();
        },
        nullptr, this, nullptr);
}

void AppearancePortal::readAsynchronously() {
    g_dbus_connection_call(
        m_bus.get(), portalName, portalPath, portalInterface, "ReadAll", readArguments(), nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, m_cancellable.get(),
        [](GObject* connection, GAsyncResult* result, gpointer self) {
            const GVariantHandle reply(
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr));
            if (reply) // null when the destructor has cancelled the call: `self` is invalid then
                static_cast<AppearancePortal*>(self)->adopt(preferencesIn(reply.get()));
        },
        this);
}

void AppearancePortal::adopt(const AppearancePreferences& preferences) {
    m_firstAnswer = {};
    if (std::exchange(m_preferences, preferences) != preferences)
        m_changed();
}

const AppearancePreferences& AppearancePortal::preferences() {
    if (m_firstAnswer.valid())
        m_preferences = m_firstAnswer.get();
    return m_preferences;
}

} // namespace kavendra
