#include "platform/desktop/SessionBus.h"
#include "platform/desktop/SystemDesktop.h"
#include "tests/support/TestBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <future>
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
constexpr TestService::Description otherInstance{
    .name = name,
    .path = path,
    .interface = interface,
    .members = "<method name='Activate'><arg type='a{sv}' direction='in'/></method>"};

/// Calls a method of the running instance, which this thread serves meanwhile. Returns whether it succeeded.
/// `parameters` are in GVariant's text format.
bool call(GDBusConnection* bus, const char* method, const char* parameters) {
    auto reply = std::async(std::launch::async, [=] {
        return GVariantHandle(g_dbus_connection_call_sync(bus, name, path, interface, method,
                                                          g_variant_new_parsed(parameters), nullptr,
                                                          G_DBUS_CALL_FLAGS_NONE, 30'000, nullptr, nullptr));
    });
    while (reply.wait_for(1ms) != std::future_status::ready)
        g_main_context_iteration(nullptr, FALSE);
    return reply.get() != nullptr;
}

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
    EXPECT_FALSE(call(bus.connect().get(), "Activate", "(@a{sv} {},)")) << "no call would be answered";
}

TEST(RunningInstance, firstProcessIsActivatedUntilItEnds) {
    const TestBus bus;
    const auto caller = bus.connect();
    const auto connection = sessionBus(); // closing the last connection would release the name
    std::vector<std::string> tokens;
    for (int start = 0; start < 2; ++start) {
        const auto instance = becomeRunningInstance();
        ASSERT_TRUE(instance);
        instance->onActivate = [&tokens](const std::string& token) { tokens.push_back(token); };
        tokens.clear();
        EXPECT_TRUE(call(caller.get(), "Activate", "(@a{sv} {},)"));
        EXPECT_TRUE(call(caller.get(), "Activate", "({'desktop-startup-id': <'old'>},)"));
        EXPECT_TRUE(call(caller.get(), "Activate",
                         "({'desktop-startup-id': <'old'>, 'activation-token': <'new'>},)"));
        EXPECT_TRUE(call(caller.get(), "Activate", "({'activation-token': <uint32 7>},)"));
        EXPECT_TRUE(call(caller.get(), "Open", "(['file:///a'], {'activation-token': <'of-open'>})"));
        EXPECT_FALSE(call(caller.get(), "ActivateAction", "('quit', @av [], @a{sv} {})"));
        EXPECT_FALSE(call(caller.get(), "Activate", "('no data',)"));
        EXPECT_EQ(tokens, (std::vector<std::string>{"", "old", "new", "", "of-open"}));
    }
    EXPECT_FALSE(call(caller.get(), "Activate", "(@a{sv} {},)"));
    const TestService other(bus, otherInstance, Manner::obliging);
    EXPECT_FALSE(becomeRunningInstance());
    EXPECT_EQ(other.calls().size(), 1U) << "the name was free for another process";
}

} // namespace kavendra
