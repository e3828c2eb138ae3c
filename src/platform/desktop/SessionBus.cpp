#include "platform/desktop/SessionBus.h"

#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <system_error>
#include <thread>

namespace kavendra {

namespace {

/// Cancels an operation of GIO after a time, unless destroyed before. g_bus_get_sync has no timeout of its
/// own.
class CancellingTimer {
public:
    explicit CancellingTimer(std::chrono::milliseconds timeLimit)
        : m_cancellable(g_cancellable_new()), m_thread([this, timeLimit](const std::stop_token& stop) {
              std::unique_lock lock(m_mutex);
              m_stopped.wait_for(lock, stop, timeLimit, [] { return false; });
              if (!stop.stop_requested())
                  g_cancellable_cancel(m_cancellable.get());
          }) {}

    GCancellable* cancellable() const { return m_cancellable.get(); }

private:
    GObjectHandle<GCancellable> m_cancellable;
    std::mutex m_mutex;
    std::condition_variable_any m_stopped;
    std::jthread m_thread; // the last member: the thread ends before what it uses is destroyed
};

} // namespace

GObjectHandle<GDBusConnection> sessionBus(std::chrono::milliseconds timeLimit) {
    try {
        const CancellingTimer timer(timeLimit);
        GObjectHandle<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, timer.cancellable(), nullptr));
        if (bus)
            g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
        return bus;
    } catch (const std::system_error&) {
        return nullptr; // no thread for the timer
    }
}

void giveUpSessionBus() {
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
}

} // namespace kavendra
