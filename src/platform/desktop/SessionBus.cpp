#include "platform/desktop/SessionBus.h"

namespace kavendra {

GObjectHandle<GDBusConnection> sessionBus() {
    GObjectHandle<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus)
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    return bus;
}

} // namespace kavendra
