#include "platform/desktop/SessionBus.h"
#include "platform/desktop/SystemDesktop.h"
#include "tests/support/TestBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

namespace kavendra {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr const char* name = KAVENDRA_APPLICATION_ID;
constexpr const char* path = "/org/kavendra/Kavendra";
constexpr const char* interface = "org.freedesktop.Application";

using Manner = TestService::Manner;

/// Another process that owns the name.
constexpr TestService::Description otherInstance{.name = name, .path = path, .interface = R"(
<node>
  <interface name='org.freedesktop.Application'>
    <method name='Activate'><arg type='a{sv}' name='platform_data' direction='in'/></method>
  </interface>
</node>)"};

class Caller {
public:
    explicit Caller(const TestBus& bus) : m_connection(bus.connect()) {}

    /// Returns whether the method succeeded. `parameters` are in GVariant's text format.
    bool call(const char* method, const char* parameters) {
        struct Outcome {
            bool isDone = false, succeeded = false;
        } outcome;
        g_dbus_connection_call(
            m_connection.get(), name, path, interface, method,
            g_variant_parse(nullptr, parameters, nullptr, nullptr, nullptr), nullptr, G_DBUS_CALL_FLAGS_NONE,
            30'000, nullptr,
            [](GObject* source, GAsyncResult* result, gpointer outcome) {
                const GVariantHandle reply(
                    g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
                *static_cast<Outcome*>(outcome) = {true, reply != nullptr};
            },
            &outcome);
        while (!outcome.isDone)
            g_main_context_iteration(nullptr, TRUE);
        return outcome.succeeded;
    }

private:
    GObjectHandle<GDBusConnection> m_connection;
};

} // namespace

TEST(RunningInstance, secondProcessPassesItsTokenAndEnds) {
    const TestBus bus;
    const TestService other(bus, otherInstance, Manner::obliging);
    unsetenv("DESKTOP_STARTUP_ID");
    unsetenv("XDG_ACTIVATION_TOKEN");
    EXPECT_FALSE(becomeRunningInstance());
    setenv("XDG_ACTIVATION_TOKEN", "a-token", 1);
    setenv("DESKTOP_STARTUP_ID", "a/startup_TIME1", 1);
    EXPECT_FALSE(becomeRunningInstance());
    EXPECT_EQ(other.calls(),
              (std::vector<std::string>{"({},)", "({'activation-token': <'a-token'>, "
                                                 "'desktop-startup-id': <'a/startup_TIME1'>},)"}));
}

TEST(RunningInstance, givesUpABusThatDoesNotAnswer) {
    for (const bool isConnected : {false, true}) {
        TestBus bus;
        const auto connection = isConnected ? sessionBus() : nullptr;
        bus.stop();
        const auto begin = Clock::now();
        auto instance = becomeRunningInstance();
        EXPECT_TRUE(instance);
        const auto first = Clock::now() - begin;
        EXPECT_LT(first, 10s);
        instance.reset();
        EXPECT_STREQ(std::getenv("DBUS_SESSION_BUS_ADDRESS"), "disabled:") << "Qt must not wait either";
        EXPECT_TRUE(isConnected || !sessionBus());
        EXPECT_LT(Clock::now() - begin, 2 * first) << "only the first call waits";
    }
}

TEST(RunningInstance, startsWithoutABusOrAnOwnerThatAccepts) {
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    EXPECT_TRUE(becomeRunningInstance());
    const TestBus bus;
    {
        const TestService other(bus, otherInstance, Manner::refusing);
        EXPECT_TRUE(becomeRunningInstance());
        EXPECT_EQ(other.calls().size(), 1U);
    }
    setenv("QT_NO_GLIB", "1", 1);
    EXPECT_TRUE(becomeRunningInstance());
    EXPECT_FALSE(Caller(bus).call("Activate", "(@a{sv} {},)")) << "no call would be answered";
}

TEST(RunningInstance, firstProcessIsActivatedUntilItEnds) {
    const TestBus bus;
    Caller caller(bus);
    const auto connection = sessionBus(); // closing the last connection would release the name
    std::vector<std::string> tokens;
    for (int start = 0; start < 2; ++start) {
        const auto instance = becomeRunningInstance();
        ASSERT_TRUE(instance);
        instance->onActivate = [&tokens](const std::string& token) { tokens.push_back(token); };
        tokens.clear();
        EXPECT_TRUE(caller.call("Activate", "(@a{sv} {},)"));
        EXPECT_TRUE(caller.call("Activate", "({'desktop-startup-id': <'old'>},)"));
        EXPECT_TRUE(
            caller.call("Activate", "({'desktop-startup-id': <'old'>, 'activation-token': <'new'>},)"));
        EXPECT_TRUE(caller.call("Activate", "({'activation-token': <uint32 7>},)"));
        EXPECT_TRUE(caller.call("Open", "(['file:///a'], {'activation-token': <'of-open'>})"));
        EXPECT_FALSE(caller.call("ActivateAction", "('quit', @av [], @a{sv} {})"));
        EXPECT_FALSE(caller.call("Activate", "('no data',)"));
        EXPECT_EQ(tokens, (std::vector<std::string>{"", "old", "new", "", "of-open"}));
    }
    EXPECT_FALSE(caller.call("Activate", "(@a{sv} {},)"));
    const TestService other(bus, otherInstance, Manner::obliging);
    EXPECT_FALSE(becomeRunningInstance());
    EXPECT_EQ(other.calls().size(), 1U) << "the name was free for another process";
}

} // namespace kavendra
