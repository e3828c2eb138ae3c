#include "platform/desktop/ColorSchemePortal.h"

#include "platform/desktop/SessionBus.h"

#include <optional>
#include <string_view>
#include <utility>

namespace kavendra {

namespace {

constexpr const char* portalName = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* portalInterface = "org.freedesktop.portal.Settings";
constexpr const char* appearanceGroup = "org.freedesktop.appearance";
constexpr const char* colorSchemeKey = "color-scheme";

constexpr int firstAnswerTimeoutMilliseconds = 100;

constexpr std::uint32_t prefersDark = 1;
constexpr std::uint32_t prefersLight = 2;

GVariant* readArguments() {
    return g_variant_new("(ss)", appearanceGroup, colorSchemeKey);
}

/// Returns the number in a value, however many variants it is wrapped in; no preference for anything else.
std::uint32_t colorScheme(GVariantHandle value) {
    while (value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_VARIANT))
        value.reset(g_variant_get_variant(value.get()));
    return value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_UINT32)
               ? g_variant_get_uint32(value.get())
               : 0;
}

std::uint32_t colorSchemeInReply(GVariant* reply) {
    return g_variant_n_children(reply) == 1 ? colorScheme(GVariantHandle(g_variant_get_child_value(reply, 0)))
                                            : 0;
}

/// Returns the color scheme that a SettingChanged signal brings, nothing when it is about another setting.
std::optional<std::uint32_t> colorSchemeInSignal(GVariant* parameters) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")))
        return std::nullopt;
    const char* changedGroup = nullptr;
    const char* changedKey = nullptr;
    g_variant_get(parameters, "(&s&sv)", &changedGroup, &changedKey, nullptr);
    if (std::string_view(changedGroup) != appearanceGroup || std::string_view(changedKey) != colorSchemeKey)
        return std::nullopt;
    return colorScheme(GVariantHandle(g_variant_get_child_value(parameters, 2)));
}

} // namespace

ColorSchemePortal::ColorSchemePortal(std::function<void()> changed)
    : changed(std::move(changed)), bus(sessionBus()), reading(g_cancellable_new()) {
    if (!bus)
        return;
    subscription = g_dbus_connection_signal_subscribe(
        bus.get(), portalName, portalInterface, "SettingChanged", portalPath, appearanceGroup,
        G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* parameters,
           gpointer self) {
            if (const auto changedTo = colorSchemeInSignal(parameters))
                static_cast<ColorSchemePortal*>(self)->adopt(*changedTo);
        },
        this, nullptr);
    // Also told for a portal that is there already, which covers one that is too slow below.
    watch = g_bus_watch_name_on_connection(
        bus.get(), portalName, G_BUS_NAME_WATCHER_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, gpointer self) {
            static_cast<ColorSchemePortal*>(self)->readLater();
        },
        nullptr, this, nullptr);
    const GVariantHandle reply(g_dbus_connection_call_sync(
        bus.get(), portalName, portalPath, portalInterface, "Read", readArguments(), nullptr,
        G_DBUS_CALL_FLAGS_NONE, firstAnswerTimeoutMilliseconds, nullptr, nullptr));
    if (reply)
        scheme = colorSchemeInReply(reply.get());
}

ColorSchemePortal::~ColorSchemePortal() {
    g_cancellable_cancel(reading.get());
    if (watch != 0)
        g_bus_unwatch_name(watch);
    if (subscription != 0)
        g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
}

void ColorSchemePortal::readLater() {
    g_dbus_connection_call(
        bus.get(), portalName, portalPath, portalInterface, "Read", readArguments(), nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, reading.get(),
        [](GObject* connection, GAsyncResult* result, gpointer self) {
            const GVariantHandle reply(
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr));
            if (reply) // a call that the destructor cancelled brings none, and must not touch the object
                static_cast<ColorSchemePortal*>(self)->adopt(colorSchemeInReply(reply.get()));
        },
        this);
}

void ColorSchemePortal::adopt(std::uint32_t colorScheme) {
    if (std::exchange(scheme, colorScheme) != colorScheme)
        changed();
}

Appearance ColorSchemePortal::preferred() const {
    return scheme == prefersDark    ? Appearance::dark
           : scheme == prefersLight ? Appearance::light
                                    : Appearance::system;
}

} // namespace kavendra
