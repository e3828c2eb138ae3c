#include "platform/desktop/SystemDesktop.h"

#include "platform/desktop/FreedesktopDesktop.h"
#include "platform/desktop/SessionBus.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kavendra {

namespace {

constexpr const char* busName = KAVENDRA_APPLICATION_ID;
constexpr const char* interfaceName = "org.freedesktop.Application";
constexpr const char* interfaceDescription = R"(
<node>
  <interface name='org.freedesktop.Application'>
    <method name='Activate'>
      <arg type='a{sv}' name='platform_data' direction='in'/>
    </method>
    <method name='Open'>
      <arg type='as' name='uris' direction='in'/>
      <arg type='a{sv}' name='platform_data' direction='in'/>
    </method>
    <method name='ActivateAction'>
      <arg type='s' name='action_name' direction='in'/>
      <arg type='av' name='parameter' direction='in'/>
      <arg type='a{sv}' name='platform_data' direction='in'/>
    </method>
  </interface>
</node>)";

using Clock = std::chrono::steady_clock;

/// Returns the path of the object: the bus name with slashes (Desktop Entry Specification, "D-Bus
/// Activation").
std::string objectPath() {
    std::string path = std::string("/") + busName;
    std::ranges::replace(path, '.', '/');
    return path;
}

/// Returns a timeout for GIO, at least 1 ms (-1 would mean its default).
int millisecondsUntil(Clock::time_point deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    return std::max(1, static_cast<int>(left.count()));
}

/// Where an activation token is in the environment of a process and in the platform data of a call.
struct TokenKind {
    const char* variable;
    const char* key;
};
/// In order of preference.
constexpr std::array tokenKinds{TokenKind{"XDG_ACTIVATION_TOKEN", "activation-token"},
                                TokenKind{"DESKTOP_STARTUP_ID", "desktop-startup-id"}};

/// Returns the platform data for the call of another instance: this process's tokens (a{sv}, floating).
GVariant* ownPlatformData() {
    GVariantBuilder data;
    g_variant_builder_init(&data, G_VARIANT_TYPE_VARDICT);
    for (const auto& [variable, key] : tokenKinds) {
        const char* token = std::getenv(variable);
        if (token && *token && g_utf8_validate(token, -1, nullptr))
            g_variant_builder_add(&data, "{sv}", key, g_variant_new_string(token));
    }
    return g_variant_builder_end(&data);
}

/// Length limit for an activation token of another process; tokens have less than 300 bytes.
constexpr std::size_t maximumTokenLength = 4096;

/// Returns the first token, empty if there is none or it is too long.
std::string tokenIn(GVariant* platformData) {
    for (const auto& [variable, key] : tokenKinds)
        if (const char* token = nullptr; g_variant_lookup(platformData, key, "&s", &token))
            return std::string_view(token).size() <= maximumTokenLength ? token : std::string();
    return {};
}

/// Whether Qt uses an event loop in which no D-Bus call would arrive.
bool isQtWithoutGLib() {
    const char* setting = std::getenv("QT_NO_GLIB");
    return setting && *setting;
}

/// Exports the object on construction; takes the name with takeName and releases it on destruction.
class BusInstance final : public RunningInstance {
public:
    explicit BusInstance(GObjectHandle<GDBusConnection> bus);
    ~BusInstance() override;

    /// Returns whether this process owns the name now; nothing when the bus does not answer.
    std::optional<bool> takeName(Clock::time_point deadline);

private:
    static void handleCall(GDBusConnection* connection, const char* sender, const char* path,
                           const char* interface, const char* method, GVariant* parameters,
                           GDBusMethodInvocation* invocation, gpointer self);

    GObjectHandle<GDBusConnection> m_bus;
    guint m_registration = 0;
    bool m_ownsName = false;
};

/// Calls a method of the bus itself; returns the number that it answers with.
std::optional<std::uint32_t> callBus(GDBusConnection* bus, const char* method, GVariant* parameters,
                                     Clock::time_point deadline) {
    const GVariantHandle reply(g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, parameters,
        G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, millisecondsUntil(deadline), nullptr, nullptr));
    if (!reply)
        return std::nullopt;
    std::uint32_t number = 0;
    g_variant_get(reply.get(), "(u)", &number);
    return number;
}

BusInstance::BusInstance(GObjectHandle<GDBusConnection> bus) : m_bus(std::move(bus)) {
    // Registered before the name is taken, so that a process that finds the name also finds the object.
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(interfaceDescription, nullptr);
    const GDBusInterfaceVTable methods{
        .method_call = handleCall, .get_property = nullptr, .set_property = nullptr, .padding = {}};
    m_registration = g_dbus_connection_register_object(m_bus.get(), objectPath().c_str(), node->interfaces[0],
                                                       &methods, this, nullptr, nullptr);
    g_dbus_node_info_unref(node);
}

BusInstance::~BusInstance() {
    if (m_ownsName)
        callBus(m_bus.get(), "ReleaseName", g_variant_new("(s)", busName), Clock::now() + busTimeLimit);
    if (m_registration != 0)
        g_dbus_connection_unregister_object(m_bus.get(), m_registration);
}

std::optional<bool> BusInstance::takeName(Clock::time_point deadline) {
    constexpr std::uint32_t doNotQueue = 4;   // DBUS_NAME_FLAG_DO_NOT_QUEUE
    constexpr std::uint32_t primaryOwner = 1; // DBUS_REQUEST_NAME_REPLY_PRIMARY_OWNER
    const auto reply =
        callBus(m_bus.get(), "RequestName", g_variant_new("(su)", busName, doNotQueue), deadline);
    if (!reply)
        return std::nullopt;
    m_ownsName = *reply == primaryOwner;
    return m_ownsName;
}

void BusInstance::handleCall(GDBusConnection*, const char*, const char*, const char*, const char* method,
                             GVariant* parameters, GDBusMethodInvocation* invocation, gpointer self) {
    if (std::string_view(method) == "ActivateAction")
        return g_dbus_method_invocation_return_error(invocation, G_DBUS_ERROR, G_DBUS_ERROR_NOT_SUPPORTED,
                                                     "kavendra has no actions");
    // The platform data is the last parameter. kavendra opens no files, so Open only shows the window.
    const GVariantHandle data(g_variant_get_child_value(parameters, g_variant_n_children(parameters) - 1));
    const std::string token = tokenIn(data.get());
    g_dbus_method_invocation_return_value(invocation, nullptr);
    static_cast<BusInstance*>(self)->onActivate(token);
}

enum class OwnerAnswer { accepted, refused, exited };

/// Calls the process that owns the name, to show its window. No answer in time counts as accepted.
OwnerAnswer activateOwner(GDBusConnection* bus, Clock::time_point deadline) {
    GError* error = nullptr;
    const GVariantHandle reply(g_dbus_connection_call_sync(
        bus, busName, objectPath().c_str(), interfaceName, "Activate",
        g_variant_new("(@a{sv})", ownPlatformData()), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
        millisecondsUntil(deadline), nullptr, &error));
    if (reply)
        return OwnerAnswer::accepted;
    const auto is = [error](GDBusError code) { return g_error_matches(error, G_DBUS_ERROR, code); };
    OwnerAnswer answer = OwnerAnswer::refused;
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT))
        answer = OwnerAnswer::accepted;
    else if (is(G_DBUS_ERROR_NO_REPLY) || is(G_DBUS_ERROR_SERVICE_UNKNOWN) ||
             is(G_DBUS_ERROR_NAME_HAS_NO_OWNER))
        answer = OwnerAnswer::exited;
    g_clear_error(&error);
    return answer;
}

} // namespace

std::unique_ptr<Desktop> makeDesktop(Processes& processes, Executor& executor) {
    return std::make_unique<FreedesktopDesktop>(processes, executor);
}

// Takes the name, or activates the process that owns it; starts over if that process exits meanwhile.
std::unique_ptr<RunningInstance> becomeRunningInstance() {
    const Clock::time_point deadline = Clock::now() + busTimeLimit;
    GObjectHandle<GDBusConnection> bus = sessionBus();
    if (!bus)
        giveUpSessionBus();
    if (!bus || isQtWithoutGLib())
        return std::make_unique<RunningInstance>();
    GDBusConnection* const connection = bus.get();
    auto instance = std::make_unique<BusInstance>(std::move(bus));
    for (int attempt = 0; attempt < 3; ++attempt) {
        const std::optional<bool> isOwner = instance->takeName(deadline);
        if (!isOwner && Clock::now() >= deadline)
            giveUpSessionBus();
        if (!isOwner || *isOwner)
            break;
        const OwnerAnswer answer = activateOwner(connection, deadline);
        if (answer == OwnerAnswer::accepted)
            return nullptr;
        if (answer == OwnerAnswer::refused)
            break;
    }
    return instance;
}

} // namespace kavendra
