#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>
#include <vector>

namespace kavendra {

/// A session bus of the test's own, to which the process's environment points while this lives.
class TestBus {
public:
    TestBus();
    ~TestBus();
    TestBus(const TestBus&) = delete;
    TestBus& operator=(const TestBus&) = delete;

    std::string address() const;

    /// Stops the bus as SIGSTOP does: connections are accepted, and nothing is answered while this lives.
    void stop();

private:
    struct Daemon;
    std::unique_ptr<Daemon> daemon;
};

/// A service on that bus that keeps what it is asked. It lives on a thread and a connection of its own,
/// because the test itself waits for its answers. Values are in GVariant's text format.
class TestService {
public:
    struct Description {
        const char* name;
        const char* path;
        const char* interface; ///< the XML of a node with one interface
    };
    enum class Manner {
        obliging,
        refusing, ///< answers with an error
        hanging,  ///< takes calls and never answers
    };

    TestService(const TestBus& bus, const Description& description, Manner manner,
                const std::string& answer = "()");
    ~TestService();
    TestService(const TestService&) = delete;
    TestService& operator=(const TestService&) = delete;

    /// Returns the parameters of every call.
    std::vector<std::string> calls() const;
    /// What an obliging service answers from now on.
    void setAnswer(const std::string& answer);
    /// Sends a signal of the interface to everybody.
    void sendSignal(const char* name, const std::string& parameters);

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace kavendra
