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

/// Returns the number in a value inside any number of variants; 0 (no preference) for other types. Read wraps
/// the value in two variants, the signal in one.
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

/// Waits for the answer for at most 0.1 s; returns 0 when there is none.
std::uint32_t readNow(GDBusConnection* bus) {
    const GVariantHandle reply(g_dbus_connection_call_sync(
        bus, portalName, portalPath, portalInterface, "Read", readArguments(), nullptr,
        G_DBUS_CALL_FLAGS_NONE, firstAnswerTimeoutMilliseconds, nullptr, nullptr));
    return reply ? colorSchemeInReply(reply.get()) : 0;
}

/// Returns the color scheme in a SettingChanged signal, nothing for another setting.
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

// The signal and the name watch are set up before the first read, so no change is missed between them. The
// name watch also reports a portal that runs already, and the read that follows covers one too slow for
// the first.
ColorSchemePortal::ColorSchemePortal(std::function<void()> changed)
    : m_changed(std::move(changed)), m_bus(sessionBus()), m_cancellable(g_cancellable_new()) {
    if (!m_bus)
        return;
    subscribe();
    m_firstAnswer = std::async([bus = m_bus.get()] { return readNow(bus); });
}

ColorSchemePortal::~ColorSchemePortal() {
    g_cancellable_cancel(m_cancellable.get());
    if (m_nameWatch != 0)
        g_bus_unwatch_name(m_nameWatch);
    if (m_subscription != 0)
        g_dbus_connection_signal_unsubscribe(m_bus.get(), m_subscription);
}

void ColorSchemePortal::subscribe() {
    m_subscription = g_dbus_connection_signal_subscribe(
        m_bus.get(), portalName, portalInterface, "SettingChanged", portalPath, appearanceGroup,
        G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* parameters,
           gpointer self) {
            if (const auto changedTo = colorSchemeInSignal(parameters))
                static_cast<ColorSchemePortal*>(self)->adopt(*changedTo);
        },
        this, nullptr);
    m_nameWatch = g_bus_watch_name_on_connection(
        m_bus.get(), portalName, G_BUS_NAME_WATCHER_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, gpointer self) {
            static_cast<ColorSchemePortal*>(self)->readAsynchronously();
        },
        nullptr, this, nullptr);
}

void ColorSchemePortal::readAsynchronously() {
    g_dbus_connection_call(
        m_bus.get(), portalName, portalPath, portalInterface, "Read", readArguments(), nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, m_cancellable.get(),
        [](GObject* connection, GAsyncResult* result, gpointer self) {
            const GVariantHandle reply(
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr));
            if (reply) // null when the destructor has cancelled the call: `self` is invalid then
                static_cast<ColorSchemePortal*>(self)->adopt(colorSchemeInReply(reply.get()));
        },
        this);
}

void ColorSchemePortal::adopt(std::uint32_t colorScheme) {
    m_firstAnswer = {};
    if (std::exchange(m_colorScheme, colorScheme) != colorScheme)
        m_changed();
}

Appearance ColorSchemePortal::preferred() {
    if (m_firstAnswer.valid())
        m_colorScheme = m_firstAnswer.get();
    return m_colorScheme == prefersDark    ? Appearance::dark
           : m_colorScheme == prefersLight ? Appearance::light
                                           : Appearance::system;
}

} // namespace kavendra
