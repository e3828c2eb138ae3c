#include "tests/support/TestBus.h"

#include <sys/wait.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>

namespace kavendra {

namespace {

/// Calls a method of the bus itself and returns the number in its answer.
std::uint32_t callBus(GDBusConnection* connection, const char* method, GVariant* parameters) {
    const GVariantHandle reply(g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
        parameters, G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    if (!reply)
        throw std::runtime_error(std::string("the test's bus refuses ") + method);
    std::uint32_t number = 0;
    g_variant_get(reply.get(), "(u)", &number);
    return number;
}

} // namespace

TestBus::TestBus() : m_bus(g_test_dbus_new(G_TEST_DBUS_NONE)) {
    const char* before = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    m_addressBefore = before ? before : "";
    g_test_dbus_up(m_bus.get());
    m_process = static_cast<pid_t>(
        callBus(connect().get(), "GetConnectionUnixProcessID", g_variant_new("(s)", "org.freedesktop.DBus")));
}

TestBus::~TestBus() {
    kill(m_process, SIGCONT);
    g_test_dbus_down(m_bus.get());
    waitpid(m_process, nullptr, 0); // GLib leaves a zombie
    setenv("DBUS_SESSION_BUS_ADDRESS", m_addressBefore.c_str(), 1);
}

GObjectHandle<GDBusConnection> TestBus::connect() const {
    GObjectHandle<GDBusConnection> connection(g_dbus_connection_new_for_address_sync(
        g_test_dbus_get_bus_address(m_bus.get()),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    if (!connection)
        throw std::runtime_error("cannot connect to the test's bus");
    return connection;
}

void TestBus::stop() {
    kill(m_process, SIGSTOP);
}

struct TestService::State {
    Description description;
    Manner manner;
    GMainContext* context = g_main_context_new();
    GObjectHandle<GDBusConnection> connection;
    std::mutex mutex;
    std::string answer;
    std::vector<std::string> calls;
    std::vector<GDBusMethodInvocation*> held; ///< calls that a hanging service has not answered
    std::jthread thread;

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
        return held.push_back(invocation);
    }
}

void TestService::State::provide() {
    const std::string xml = std::string("<node><interface name='") + description.interface + "'>" +
                            description.members + "</interface></node>";
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(xml.c_str(), nullptr);
    const auto take = [](GDBusConnection*, const char*, const char*, const char*, const char*,
                         GVariant* parameters, GDBusMethodInvocation* invocation,
                         gpointer state) { static_cast<State*>(state)->take(parameters, invocation); };
    const GDBusInterfaceVTable methods{
        .method_call = take, .get_property = nullptr, .set_property = nullptr, .padding = {}};
    g_main_context_push_thread_default(context);
    g_dbus_connection_register_object(connection.get(), description.path, node->interfaces[0], &methods, this,
                                      nullptr, nullptr);
    g_main_context_pop_thread_default(context);
    g_dbus_node_info_unref(node);
    callBus(connection.get(), "RequestName", g_variant_new("(su)", description.name, 0U));
}

TestService::TestService(const TestBus& bus, const Description& description, Manner manner,
                         const std::string& answer)
    : m_state(std::make_unique<State>()) {
    m_state->description = description;
    m_state->manner = manner;
    m_state->answer = answer;
    m_state->connection = bus.connect();
    m_state->provide();
    m_state->thread = std::jthread([context = m_state->context](const std::stop_token& stop) {
        while (!stop.stop_requested())
            g_main_context_iteration(context, TRUE);
    });
}

TestService::~TestService() {
    m_state->thread.request_stop();
    g_main_context_wakeup(m_state->context);
    m_state->thread.join();
    for (GDBusMethodInvocation* call : m_state->held)
        g_object_unref(call);
    g_dbus_connection_close_sync(m_state->connection.get(), nullptr, nullptr);
    g_main_context_unref(m_state->context);
}

std::vector<std::string> TestService::calls() const {
    const std::lock_guard lock(m_state->mutex);
    return m_state->calls;
}

void TestService::setAnswer(const std::string& answer) {
    const std::lock_guard lock(m_state->mutex);
    m_state->answer = answer;
}

void TestService::answerHeldCalls() {
    const std::lock_guard lock(m_state->mutex);
    for (GDBusMethodInvocation* call : std::exchange(m_state->held, {}))
        g_dbus_method_invocation_return_value(call, g_variant_new_parsed(m_state->answer.c_str()));
}

void TestService::sendSignal(const char* name, const std::string& parameters) {
    g_dbus_connection_emit_signal(m_state->connection.get(), nullptr, m_state->description.path,
                                  m_state->description.interface, name,
                                  g_variant_new_parsed(parameters.c_str()), nullptr);
}

} // namespace kavendra
