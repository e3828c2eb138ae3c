#include "platform/desktop/ActivationTokens.h"

#include "platform/desktop/StartupNotification.h"
#include "platform/desktop/SystemDesktop.h"
#include "platform/desktop/WindowThread.h"
#include "platform/desktop/XDGActivation.h"

#include <QGuiApplication>
#include <QInputDevice>
#include <QScreen>
#include <QWindow>
#include <qpa/qplatformnativeinterface.h>

#include <chrono>
#include <mutex>

namespace kavendra {

namespace {

/// How long a launch may wait for its token.
constexpr std::chrono::milliseconds timeLimit{100};

enum class DisplayKind { wayland, x11, other };

DisplayKind displayKind() {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return DisplayKind::other;
    const QString name = QGuiApplication::platformName();
    return name.startsWith("wayland") ? DisplayKind::wayland
           : name == "xcb"            ? DisplayKind::x11
                                      : DisplayKind::other;
}

/// Returns an object of the Wayland connection by Qt's name for it.
template <typename T>
T* waylandObject(const char* name) {
    return static_cast<T*>(QGuiApplication::platformNativeInterface()->nativeResourceForIntegration(name));
}

XDGActivation::Trigger lastInput() {
    XDGActivation::Trigger trigger;
    if (!QInputDevice::devices().isEmpty()) { // without a seat, Qt would dereference null
        trigger.seat = waylandObject<wl_seat>("wl_seat");
        trigger.serial =
            static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(waylandObject<void>("serial")));
    }
    if (QWindow* const window = QGuiApplication::focusWindow())
        trigger.surface = static_cast<wl_surface*>(
            QGuiApplication::platformNativeInterface()->nativeResourceForWindow("surface", window));
    return trigger;
}

/// Returns a startup id with the time of the last input in the window; empty when there was none.
std::string startupIDOfLastInput() {
    void* const time = QGuiApplication::platformNativeInterface()->nativeResourceForScreen(
        "appusertime", QGuiApplication::primaryScreen());
    return time ? newStartupID(static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(time)))
                : std::string();
}

/// Deletes nothing: when this desktop is destroyed, Qt has closed the connection, and that has released the
/// client's objects.
struct EndsWithConnection {
    void operator()(XDGActivation* /*unused*/) const {}
};

} // namespace

struct ActivationTokens::Wayland {
    std::timed_mutex mutex; // one request at a time
    std::unique_ptr<XDGActivation, EndsWithConnection> activation;
};

ActivationTokens::ActivationTokens(Executor& executor)
    : m_executor(executor), m_wayland(std::make_unique<Wayland>()) {}

ActivationTokens::~ActivationTokens() = default;

std::string ActivationTokens::next() {
    struct Start {
        wl_display* display = nullptr;
        std::string startupID;
    };
    const Start start = onWindowThread(m_executor, [] {
        const DisplayKind kind = displayKind();
        return kind == DisplayKind::wayland ? Start{waylandObject<wl_display>("wl_display"), {}}
               : kind == DisplayKind::x11   ? Start{nullptr, startupIDOfLastInput()}
                                            : Start{};
    });
    if (!start.display)
        return start.startupID;
    const auto deadline = XDGActivation::Clock::now() + timeLimit;
    const std::unique_lock lock(m_wayland->mutex, deadline);
    if (!lock)
        return {};
    auto& activation = m_wayland->activation;
    if (!activation)
        activation.reset(new XDGActivation(start.display));
    if (!activation->isSupported(deadline))
        return {};
    onWindowThread(m_executor, [&] {
        activation->request(lastInput());
        return true;
    });
    return activation->takeToken(deadline);
}

void endStartupNotification(const std::string& token) {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || token.empty())
        return;
    // Qt asks the window manager to activate the window at this time.
    const auto setAppTime =
        reinterpret_cast<void (*)(QScreen*, std::uint32_t)>(reinterpret_cast<QFunctionPointer>(
            QGuiApplication::platformNativeInterface()->nativeResourceFunctionForScreen("setapptime")));
    if (const auto time = timeOfStartupID(token); time && setAppTime)
        setAppTime(QGuiApplication::primaryScreen(), *time);
    sendStartupEnd(x11->connection(), token);
}

} // namespace kavendra
