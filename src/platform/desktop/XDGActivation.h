#pragma once

#include <chrono>
#include <cstdint>
#include <string>

struct wl_callback;
struct wl_display;
struct wl_event_queue;
struct wl_registry;
struct wl_seat;
struct wl_surface;
struct xdg_activation_token_v1;
struct xdg_activation_v1;

namespace kavendra {

/// A client of the Wayland protocol xdg-activation-v1 on a connection that belongs to someone else. It has an
/// event queue of its own, so that it may wait on another thread than that of the connection's owner.
class XDGActivation {
public:
    using Clock = std::chrono::steady_clock;

    /// Input of the person, from which a token follows.
    struct Trigger {
        std::uint32_t serial = 0; ///< of the input event
        wl_seat* seat = nullptr;
        wl_surface* surface = nullptr; ///< of the window that has the focus
    };

    /// The connection must outlive this.
    explicit XDGActivation(wl_display* display);
    ~XDGActivation();
    XDGActivation(const XDGActivation&) = delete;
    XDGActivation& operator=(const XDGActivation&) = delete;

    /// Waits until the compositor has told its protocols. Returns whether it has this one.
    bool isSupported(Clock::time_point deadline);

    /// Asks for a token. Call it on the thread on which the objects of `trigger` live, when isSupported().
    void request(const Trigger& trigger);

    /// Waits for the token that was requested; empty when there is none in time.
    std::string takeToken(Clock::time_point deadline);

private:
    static void addGlobal(void* self, wl_registry* registry, std::uint32_t name, const char* interface,
                          std::uint32_t version);

    /// Handles events of the queue until `isDone`. Returns false at the deadline or when the connection is
    /// lost.
    bool dispatchUntil(const bool& isDone, Clock::time_point deadline);

    wl_display* m_display;
    wl_event_queue* m_queue;
    wl_registry* m_registry = nullptr;
    wl_callback* m_endOfGlobals = nullptr;
    xdg_activation_v1* m_activation = nullptr;
    xdg_activation_token_v1* m_request = nullptr;
    bool m_hasGlobals = false;
    bool m_hasToken = false;
    std::string m_token;
};

} // namespace kavendra
