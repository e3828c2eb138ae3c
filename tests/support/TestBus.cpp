#include "tests/support/TestBus.h"

#include "platform/desktop/GLibHandles.h"

#include <sys/wait.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace kavendra {

namespace {

GDBusConnection* connectTo(const std::string& address) {
    GDBusConnection* connection = g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    if (!connection)
        throw std::runtime_error("cannot connect to the test's bus");
    return connection;
}

/// Returns the process id of the bus.
pid_t processOfBus(const std::string& address) {
    GDBusConnection* connection = connectTo(address);
    const GVariantHandle reply(g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "GetConnectionUnixProcessID", g_variant_new("(s)", "org.freedesktop.DBus"), G_VARIANT_TYPE("(u)"),
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    g_dbus_connection_close_sync(connection, nullptr, nullptr);
    g_object_unref(connection);
    if (!reply)
        throw std::runtime_error("the test's bus does not know its process");
    std::uint32_t process = 0;
    g_variant_get(reply.get(), "(u)", &process);
    return static_cast<pid_t>(process);
}

} // namespace

struct TestBus::Daemon {
    GTestDBus* bus = g_test_dbus_new(G_TEST_DBUS_NONE);
    std::string addressBefore;
    pid_t process = 0;
};

TestBus::TestBus() : daemon(std::make_unique<Daemon>()) {
    const char* before = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    daemon->addressBefore = before ? before : "";
    g_test_dbus_up(daemon->bus);
    daemon->process = processOfBus(address());
}

TestBus::~TestBus() {
    kill(daemon->process, SIGCONT);
    g_test_dbus_down(daemon->bus);
    waitpid(daemon->process, nullptr, 0); // GLib leaves it as a zombie
    g_object_unref(daemon->bus);
    setenv("DBUS_SESSION_BUS_ADDRESS", daemon->addressBefore.c_str(), 1);
}

std::string TestBus::address() const {
    return g_test_dbus_get_bus_address(daemon->bus);
}

void TestBus::stop() {
    kill(daemon->process, SIGSTOP);
}

struct TestService::State {
    Description description;
    Manner manner;
    GMainContext* context = g_main_context_new();
    GMainLoop* loop = g_main_loop_new(context, FALSE);
    GDBusConnection* connection = nullptr;
    std::string interfaceName;
    std::mutex mutex;
    std::string answer;
    std::vector<std::string> calls;
    std::thread thread;

    void provide();
    void take(GVariant* parameters, GDBusMethodInvocation* invocation);
};

void TestService::State::take(GVariant* parameters, GDBusMethodInvocation* invocation) {
    const GText text(g_variant_print(parameters, FALSE));
    const std::lock_guard lock(mutex);
    calls.emplace_back(text.get());
    switch (manner) {
    case Manner::obliging:
        return g_dbus_method_invocation_return_value(invocation, g_variant_new_parsed(answer.c_str()));
    case Manner::refusing:
        return g_dbus_method_invocation_return_dbus_error(invocation, "org.example.Refused", "Not today");
    case Manner::hanging:
        return g_object_unref(invocation);
    }
}

void TestService::State::provide() {
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(description.interface, nullptr);
    interfaceName = node->interfaces[0]->name;
    const auto take = [](GDBusConnection*, const char*, const char*, const char*, const char*,
                         GVariant* parameters, GDBusMethodInvocation* invocation,
                         gpointer state) { static_cast<State*>(state)->take(parameters, invocation); };
    const GDBusInterfaceVTable methods{
        .method_call = take, .get_property = nullptr, .set_property = nullptr, .padding = {}};
    g_main_context_push_thread_default(context);
    g_dbus_connection_register_object(connection, description.path, node->interfaces[0], &methods, this,
                                      nullptr, nullptr);
    g_main_context_pop_thread_default(context);
    g_dbus_node_info_unref(node);
    GVariant* reply = g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", description.name, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    if (!reply)
        throw std::runtime_error("cannot own the service's name");
    g_variant_unref(reply);
}

TestService::TestService(const TestBus& bus, const Description& description, Manner manner,
                         const std::string& answer)
    : state(std::make_unique<State>()) {
    state->description = description;
    state->manner = manner;
    state->answer = answer;
    state->connection = connectTo(bus.address());
    state->provide();
    state->thread = std::thread([loop = state->loop] { g_main_loop_run(loop); });
}

TestService::~TestService() {
    // Asked for from within the loop, in case the thread has not come to run it yet.
    GSource* source = g_idle_source_new();
    g_source_set_callback(
        source,
        [](gpointer loop) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop*>(loop));
            return G_SOURCE_REMOVE;
        },
        state->loop, nullptr);
    g_source_attach(source, state->context);
    g_source_unref(source);
    state->thread.join();
    g_dbus_connection_close_sync(state->connection, nullptr, nullptr);
    g_object_unref(state->connection);
    g_main_loop_unref(state->loop);
    g_main_context_unref(state->context);
}

std::vector<std::string> TestService::calls() const {
    const std::lock_guard lock(state->mutex);
    return state->calls;
}

void TestService::setAnswer(const std::string& answer) {
    const std::lock_guard lock(state->mutex);
    state->answer = answer;
}

void TestService::sendSignal(const char* name, const std::string& parameters) {
    g_dbus_connection_emit_signal(state->connection, nullptr, state->description.path,
                                  state->interfaceName.c_str(), name,
                                  g_variant_new_parsed(parameters.c_str()), nullptr);
}

} // namespace kavendra
