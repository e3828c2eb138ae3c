#pragma once

#include "platform/desktop/GLibHandles.h"

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

namespace kavendra {

/// A private session bus; the environment of the process points to it during its lifetime.
class TestBus {
public:
    TestBus();
    ~TestBus();
    TestBus(const TestBus&) = delete;
    TestBus& operator=(const TestBus&) = delete;

    GObjectHandle<GDBusConnection> connect() const;

    /// Stops the bus by SIGSTOP: it accepts connections and answers nothing from then on.
    void stop();

private:
    GObjectHandle<GTestDBus> m_bus;
    std::string m_addressBefore;
    pid_t m_process = 0;
};

/// A service on that bus that records calls. It has its own thread and connection, because the test waits for
/// its answers. Values are in GVariant's text format.
class TestService {
public:
    struct Description {
        const char* name;
        const char* path;
        const char* interface;
        const char* members; ///< the XML of the methods and signals
    };
    enum class Manner {
        obliging,
        refusing, ///< answers with an error
        hanging,  ///< takes calls and does not answer before answerHeldCalls()
    };

    TestService(const TestBus& bus, const Description& description, Manner manner,
                const std::string& answer = "()");
    ~TestService();
    TestService(const TestService&) = delete;
    TestService& operator=(const TestService&) = delete;

    /// Returns the parameters of every call.
    std::vector<std::string> calls() const;
    void answerHeldCalls();
    void setAnswer(const std::string& answer);
    void sendSignal(const char* name, const std::string& parameters);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace kavendra
