#pragma once

#include "tests/support/TestBus.h"

#include <atomic>
#include <cstdint>

namespace kavendra {

/// A settings portal on a test's bus that knows one setting.
class TestPortal {
public:
    enum class Manner {
        obliging,
        hanging,   ///< takes calls and never answers
        confused,  ///< answers with what is no color scheme
        knowsNone, ///< fails: it does not have the setting
    };

    TestPortal(const TestBus& bus, std::uint32_t colorScheme, Manner manner = Manner::obliging);

    /// Sets the color scheme and tells everybody.
    void setColorScheme(std::uint32_t colorScheme);
    /// Tells of a change of another setting.
    void changeSomethingElse();

    int readCount() const { return reads; }

private:
    void answer(GDBusMethodInvocation* invocation);

    Manner manner;
    std::atomic<std::uint32_t> scheme;
    std::atomic<int> reads = 0;
    TestService service;
};

} // namespace kavendra
