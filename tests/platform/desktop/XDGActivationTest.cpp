#include "platform/desktop/XDGActivation.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>
#include <wayland-client.h>

namespace kavendra {

TEST(XDGActivation, waitsNoLongerThanAllowedForACompositor) {
    using Clock = XDGActivation::Clock;
    using namespace std::chrono_literals;
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    wl_display* const display = wl_display_connect_to_fd(ends[0]);
    ASSERT_TRUE(display);
    auto activation = std::make_unique<XDGActivation>(display);
    const auto begin = Clock::now();
    EXPECT_FALSE(activation->isSupported(begin + 100ms)) << "nothing answers";
    EXPECT_GE(Clock::now() - begin, 100ms);
    EXPECT_FALSE(activation->isSupported(begin)) << "the time is over";
    close(ends[1]);
    EXPECT_FALSE(activation->isSupported(Clock::now() + 1h)) << "the connection is lost";
    EXPECT_LT(Clock::now() - begin, 1min);
    activation.reset();
    wl_display_disconnect(display);
}

} // namespace kavendra
