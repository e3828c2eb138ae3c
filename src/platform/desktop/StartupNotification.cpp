#include "platform/desktop/StartupNotification.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <atomic>
#include <charconv>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace kavendra {

namespace {

constexpr std::string_view timeMark = "_TIME";

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace

std::string newStartupID(std::uint32_t time) {
    static std::atomic<unsigned> number = 0;
    char host[256] = "";
    gethostname(host, sizeof host - 1);
    return "kavendra-" + std::to_string(getpid()) + "-" + std::to_string(++number) + "-" + host +
           std::string(timeMark) + std::to_string(time);
}

std::optional<std::uint32_t> timeOfStartupID(const std::string& id) {
    const std::size_t mark = id.rfind(timeMark);
    std::uint32_t time = 0;
    if (mark == std::string::npos)
        return std::nullopt;
    const char* const end = id.data() + id.size();
    const auto [parsed, error] = std::from_chars(id.data() + mark + timeMark.size(), end, time);
    return error == std::errc() && parsed == end ? std::optional(time) : std::nullopt;
}

// The text goes to the root window in client messages of 20 bytes, which name a window of the sender.
void sendStartupEnd(xcb_connection_t* connection, const std::string& id) {
    std::string text = "remove: ID=\"";
    for (const char character : id) {
        if (character == '"' || character == '\\')
            text += '\\';
        text += character;
    }
    text += '"';
    text += '\0';

    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const xcb_window_t sender = xcb_generate_id(connection);
    xcb_create_window(connection, 0, sender, root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = sender;
    message.type = atom(connection, "_NET_STARTUP_INFO_BEGIN");
    const xcb_atom_t continued = atom(connection, "_NET_STARTUP_INFO");
    constexpr std::size_t chunk = sizeof message.data.data8;
    for (std::size_t offset = 0; offset < text.size(); offset += chunk) {
        message.data = {};
        text.copy(reinterpret_cast<char*>(message.data.data8), chunk, offset);
        xcb_send_event(connection, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char*>(&message));
        message.type = continued;
    }
    xcb_destroy_window(connection, sender);
    xcb_flush(connection);
}

} // namespace kavendra
