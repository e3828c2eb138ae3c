#include "platform/desktop/X11Selection.h"

#include <poll.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <optional>

namespace kavendra {

namespace {

using Clock = std::chrono::steady_clock;

struct Free {
    void operator()(void* memory) const { std::free(memory); } // as XCB asks for
};
template <typename Type>
using Reply = std::unique_ptr<Type, Free>;

/// One conversion of a selection to text, into a property of a window that is never shown.
class Conversion {
public:
    Conversion(const X11Connection& connection, std::chrono::milliseconds timeLimit, std::size_t maximumSize)
        : m_connection(connection.get()), m_deadline(Clock::now() + timeLimit), m_maximumSize(maximumSize),
          m_window(xcb_generate_id(m_connection)), m_property(atom("KAVENDRA_SELECTION")),
          m_incremental(atom("INCR")) {
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    }

    std::string text(const std::string& selection) {
        xcb_convert_selection(m_connection, m_window, atom(selection), atom("UTF8_STRING"), m_property,
                              XCB_CURRENT_TIME);
        if (!waitForOwner())
            return {};
        std::string text;
        if (takeProperty(text) != m_incremental)
            return text;
        // The owner sends pieces, each after the one before was taken, and ends with an empty one.
        text.clear();
        while (text.size() < m_maximumSize) {
            const std::size_t sizeBefore = text.size();
            if (!waitForPiece())
                return {};
            takeProperty(text);
            if (text.size() == sizeBefore)
                break;
        }
        return text;
    }

private:
    xcb_atom_t atom(const std::string& name) const {
        const auto cookie =
            xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
        const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }

    /// Returns the next event; null at the deadline or without a server.
    Reply<xcb_generic_event_t> nextEvent() const {
        xcb_flush(m_connection);
        while (!xcb_connection_has_error(m_connection)) {
            // First the time: another client may send events without end.
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now());
            if (left.count() <= 0)
                break;
            if (Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)})
                return event;
            pollfd readable{xcb_get_file_descriptor(m_connection), POLLIN, 0};
            if (poll(&readable, 1, static_cast<int>(left.count())) == 0)
                break;
        }
        return nullptr;
    }

    /// Returns whether the owner has converted the selection.
    bool waitForOwner() const {
        while (const auto event = nextEvent())
            if ((event->response_type & ~0x80) == XCB_SELECTION_NOTIFY) // without the mark of sent events
                return reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property !=
                       XCB_ATOM_NONE;
        return false;
    }

    bool waitForPiece() const {
        while (const auto event = nextEvent()) {
            const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
            if ((event->response_type & ~0x80) == XCB_PROPERTY_NOTIFY &&
                change.state == XCB_PROPERTY_NEW_VALUE && change.atom == m_property)
                return true;
        }
        return false;
    }

    /// Appends the value of the property to `text`, as far as there is room, and deletes the property.
    /// Returns its type.
    xcb_atom_t takeProperty(std::string& text) const {
        const std::size_t words = (m_maximumSize - text.size() + 3) / 4;
        const auto cookie = xcb_get_property(m_connection, 1, m_window, m_property, XCB_ATOM_ANY, 0,
                                             static_cast<std::uint32_t>(words));
        const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
        if (!reply)
            return XCB_ATOM_NONE;
        text.append(static_cast<const char*>(xcb_get_property_value(reply.get())),
                    static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
        return reply->type;
    }

    xcb_connection_t* m_connection;
    Clock::time_point m_deadline;
    std::size_t m_maximumSize;
    xcb_window_t m_window;
    xcb_atom_t m_property;
    xcb_atom_t m_incremental;
};

} // namespace

X11Connection connectToX11() {
    X11Connection connection(xcb_connect(nullptr, nullptr), xcb_disconnect);
    return xcb_connection_has_error(connection.get()) ? nullptr : connection;
}

std::string readX11Selection(const X11Connection& connection, const std::string& selection,
                             std::chrono::milliseconds timeLimit, std::size_t maximumSize) {
    return Conversion(connection, timeLimit, maximumSize).text(selection);
}

} // namespace kavendra
