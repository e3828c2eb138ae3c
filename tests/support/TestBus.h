#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>

namespace kavendra {

/// A session bus of the test's own, to which the process's environment points while this lives.
class TestBus {
public:
    TestBus();
    ~TestBus();
    TestBus(const TestBus&) = delete;
    TestBus& operator=(const TestBus&) = delete;

    std::string address() const;

private:
    struct Daemon;
    std::unique_ptr<Daemon> daemon;
};

/// A service on that bus. It lives on a thread and a connection of its own, because the test itself waits for
/// its answers.
class TestService {
public:
    struct Description {
        const char* name;
        const char* path;
        const char* interface; ///< the XML of a node with one interface
    };
    /// Called on the service's thread for every method call, which it has to answer or to drop.
    using Handler = std::function<void(const std::string& method, GVariant* parameters,
                                       GDBusMethodInvocation* invocation)>;

    TestService(const TestBus& bus, const Description& description, Handler handler);
    ~TestService();
    TestService(const TestService&) = delete;
    TestService& operator=(const TestService&) = delete;

    /// Emits a signal of the interface; takes a floating `parameters`.
    void emit(const char* signal, GVariant* parameters);

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace kavendra
