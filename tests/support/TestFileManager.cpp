#include "tests/support/TestFileManager.h"

#include <gio/gio.h>

#include <cstdlib>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace kavendra {

struct TestBus::Daemon {
    GTestDBus* bus = g_test_dbus_new(G_TEST_DBUS_NONE);
    std::string addressBefore;
};

TestBus::TestBus() : daemon(std::make_unique<Daemon>()) {
    const char* before = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    daemon->addressBefore = before ? before : "";
    g_test_dbus_up(daemon->bus);
}

TestBus::~TestBus() {
    g_test_dbus_down(daemon->bus);
    g_object_unref(daemon->bus);
    setenv("DBUS_SESSION_BUS_ADDRESS", daemon->addressBefore.c_str(), 1);
}

std::string TestBus::address() const {
    return g_test_dbus_get_bus_address(daemon->bus);
}

/// Lives on a thread and in a main context of its own, because the test itself waits for its answers.
struct TestFileManager::Service {
    Manner manner = Manner::obliging;
    GMainContext* context = g_main_context_new();
    GMainLoop* loop = g_main_loop_new(context, FALSE);
    GDBusConnection* connection = nullptr;
    std::thread thread;
    std::mutex mutex;
    std::vector<std::string> uris;

    void connect(const std::string& address);
    static void answer(GDBusConnection*, const char*, const char*, const char*, const char*,
                       GVariant* parameters, GDBusMethodInvocation* invocation, gpointer service);
};

namespace {

constexpr const char* interfaceDescription = R"(
<node>
  <interface name='org.freedesktop.FileManager1'>
    <method name='ShowFolders'>
      <arg type='as' name='URIs' direction='in'/>
      <arg type='s' name='StartupId' direction='in'/>
    </method>
  </interface>
</node>)";

} // namespace

void TestFileManager::Service::answer(GDBusConnection*, const char*, const char*, const char*, const char*,
                                      GVariant* parameters, GDBusMethodInvocation* invocation,
                                      gpointer service) {
    auto* self = static_cast<Service*>(service);
    const char** uris = nullptr;
    g_variant_get(parameters, "(^a&s&s)", &uris, nullptr);
    {
        const std::lock_guard lock(self->mutex);
        for (const char** uri = uris; *uri; ++uri)
            self->uris.emplace_back(*uri);
    }
    g_free(uris);
    switch (self->manner) {
    case Manner::obliging:
        return g_dbus_method_invocation_return_value(invocation, nullptr);
    case Manner::refusing:
        return g_dbus_method_invocation_return_dbus_error(invocation, "org.example.Refused", "Not today");
    case Manner::hanging:
        return g_object_unref(invocation);
    }
}

void TestFileManager::Service::connect(const std::string& address) {
    connection = g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    if (!connection)
        throw std::runtime_error("cannot connect to the test's bus");
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(interfaceDescription, nullptr);
    const GDBusInterfaceVTable methods{
        .method_call = answer, .get_property = nullptr, .set_property = nullptr, .padding = {}};
    g_main_context_push_thread_default(context);
    g_dbus_connection_register_object(connection, "/org/freedesktop/FileManager1", node->interfaces[0],
                                      &methods, this, nullptr, nullptr);
    g_main_context_pop_thread_default(context);
    g_dbus_node_info_unref(node);
    GVariant* reply = g_dbus_connection_call_sync(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                  "org.freedesktop.DBus", "RequestName",
                                                  g_variant_new("(su)", "org.freedesktop.FileManager1", 0U),
                                                  nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    if (!reply)
        throw std::runtime_error("cannot own the file manager's name");
    g_variant_unref(reply);
}

TestFileManager::TestFileManager(const TestBus& bus, Manner manner) : service(std::make_unique<Service>()) {
    service->manner = manner;
    service->connect(bus.address());
    service->thread = std::thread([loop = service->loop] { g_main_loop_run(loop); });
}

TestFileManager::~TestFileManager() {
    g_main_loop_quit(service->loop);
    service->thread.join();
    g_dbus_connection_close_sync(service->connection, nullptr, nullptr);
    g_object_unref(service->connection);
    g_main_loop_unref(service->loop);
    g_main_context_unref(service->context);
}

std::vector<std::string> TestFileManager::shownFolders() const {
    const std::lock_guard lock(service->mutex);
    return service->uris;
}

} // namespace kavendra
