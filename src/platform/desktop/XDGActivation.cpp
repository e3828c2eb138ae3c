#include "platform/desktop/XDGActivation.h"

#include <poll.h>
#include <wayland-client.h>
#include <xdg-activation-v1-client-protocol.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

namespace kavendra {

XDGActivation::XDGActivation(wl_display* display)
    : m_display(display), m_queue(wl_display_create_queue(display)) {
    // Objects made from the wrapper send their events to our queue, also those made of them.
    auto* const wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), m_queue);
    static constexpr wl_registry_listener globals{.global = addGlobal,
                                                  .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
    m_registry = wl_display_get_registry(wrapper);
    wl_registry_add_listener(m_registry, &globals, this);
    // The answer to this comes after the globals.
    static constexpr wl_callback_listener answered{.done = [](void* self, wl_callback*, std::uint32_t) {
        static_cast<XDGActivation*>(self)->m_hasGlobals = true;
    }};
    m_endOfGlobals = wl_display_sync(wrapper);
    wl_callback_add_listener(m_endOfGlobals, &answered, this);
    wl_proxy_wrapper_destroy(wrapper);
}

XDGActivation::~XDGActivation() {
    if (m_request)
        xdg_activation_token_v1_destroy(m_request);
    if (m_activation)
        xdg_activation_v1_destroy(m_activation);
    wl_callback_destroy(m_endOfGlobals);
    wl_registry_destroy(m_registry);
    wl_event_queue_destroy(m_queue);
}

void XDGActivation::addGlobal(void* self, wl_registry* registry, std::uint32_t name, const char* interface,
                              std::uint32_t) {
    if (std::string_view(interface) == xdg_activation_v1_interface.name)
        static_cast<XDGActivation*>(self)->m_activation = static_cast<xdg_activation_v1*>(
            wl_registry_bind(registry, name, &xdg_activation_v1_interface, 1));
}

bool XDGActivation::isSupported(Clock::time_point deadline) {
    return dispatchUntil(m_hasGlobals, deadline) && m_activation;
}

void XDGActivation::request(const Trigger& trigger) {
    static constexpr xdg_activation_token_v1_listener listener{
        .done = [](void* self, xdg_activation_token_v1*, const char* token) {
            static_cast<XDGActivation*>(self)->m_token = token;
            static_cast<XDGActivation*>(self)->m_hasToken = true;
        }};
    m_hasToken = false;
    m_token.clear();
    m_request = xdg_activation_v1_get_activation_token(m_activation);
    xdg_activation_token_v1_add_listener(m_request, &listener, this);
    if (trigger.seat)
        xdg_activation_token_v1_set_serial(m_request, trigger.serial, trigger.seat);
    if (trigger.surface)
        xdg_activation_token_v1_set_surface(m_request, trigger.surface);
    xdg_activation_token_v1_commit(m_request);
}

std::string XDGActivation::takeToken(Clock::time_point deadline) {
    dispatchUntil(m_hasToken, deadline);
    xdg_activation_token_v1_destroy(std::exchange(m_request, nullptr)); // a later event is dropped
    return std::exchange(m_token, {});
}

// As wl_display_dispatch_queue, which has no timeout.
bool XDGActivation::dispatchUntil(const bool& isDone, Clock::time_point deadline) {
    while (wl_display_dispatch_queue_pending(m_display, m_queue) >= 0 && !isDone) {
        if (wl_display_prepare_read_queue(m_display, m_queue) != 0)
            continue; // events have come meanwhile
        wl_display_flush(m_display);
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd connection{.fd = wl_display_get_fd(m_display), .events = POLLIN, .revents = 0};
        const int ready = poll(&connection, 1, std::max(0, static_cast<int>(left.count())));
        if (ready > 0) {
            if (wl_display_read_events(m_display) != 0)
                return false;
            continue;
        }
        const bool isInterrupted = ready < 0 && errno == EINTR;
        wl_display_cancel_read(m_display);
        if (!isInterrupted)
            return false;
    }
    return isDone;
}

} // namespace kavendra
