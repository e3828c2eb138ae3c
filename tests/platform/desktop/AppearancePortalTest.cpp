#include "platform/desktop/AppearancePortal.h"

#include "platform/desktop/FreedesktopDesktop.h"
#include "tests/support/ProcessTable.h"
#include "tests/support/TestBus.h"
#include "tests/support/TestExecutors.h"

#include <QGuiApplication>
#include <QPalette>
#include <QTest>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

namespace kavendra {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

using Manner = TestService::Manner;

constexpr TestService::Description settingsPortal{
    .name = "org.freedesktop.portal.Desktop",
    .path = "/org/freedesktop/portal/desktop",
    .interface = "org.freedesktop.portal.Settings",
    .members = "<method name='ReadAll'><arg type='as' direction='in'/><arg type='a{sa{sv}}' "
               "direction='out'/></method>"
               "<signal name='SettingChanged'><arg type='s'/><arg type='s'/><arg type='v'/></signal>"};

/// Returns the answer of ReadAll with one setting.
std::string answerWith(const std::string& key, const std::string& value,
                       const std::string& group = "org.freedesktop.appearance") {
    return "({'" + group + "': {'" + key + "': <" + value + ">}, 'other': {'color-scheme': <uint32 1>}},)";
}

std::string scheme(int number) {
    return answerWith("color-scheme", "uint32 " + std::to_string(number));
}

void change(TestService& portal, const std::string& key, int number) {
    if (key == "color-scheme")
        portal.setAnswer(scheme(number));
    portal.sendSignal("SettingChanged", "('org.freedesktop.appearance', '" + key + "', <uint32 " +
                                            std::to_string(number) + ">)");
}

void dispatchPending() {
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
}

/// Runs the main context until the condition holds, as eventually() does.
bool eventuallyInLoop(const std::function<bool()>& condition) {
    return eventually([&] {
        dispatchPending();
        return condition();
    });
}

} // namespace

TEST(AppearancePortal, readsThePreferences) {
    struct Case {
        std::string answer;
        Manner manner;
        AppearancePreferences expected;
    };
    using enum Manner;
    const AppearancePreferences none;
    for (const auto& [answer, manner, expected] : {
             Case{scheme(0), obliging, none},
             Case{scheme(1), obliging, {.appearance = Appearance::dark}},
             Case{scheme(2), obliging, {.appearance = Appearance::light}},
             Case{scheme(3), obliging, none},
             Case{answerWith("color-scheme", "'dark'"), obliging, none},
             Case{answerWith("contrast", "uint32 1"), obliging, {.highContrast = true}},
             Case{answerWith("contrast", "uint32 2"), obliging, none},
             Case{answerWith("reduced-motion", "uint32 1"), obliging, {.reducedMotion = true}},
             Case{answerWith("enable-animations", "false", "org.gnome.desktop.interface"),
                  obliging,
                  {.animations = false}},
             Case{scheme(1), refusing, none},
         }) {
        const TestBus bus;
        const TestService service(bus, settingsPortal, manner, answer);
        // On a loaded machine an answer may need longer than the 0.1 s that a portal is given.
        EXPECT_TRUE(eventually([&] { return AppearancePortal([] {}).preferences() == expected; })) << answer;
    }
}

TEST(AppearancePortal, doesNotWaitForAHangingPortal) {
    const TestBus bus;
    TestService service(bus, settingsPortal, Manner::hanging);
    const auto begin = Clock::now();
    AppearancePortal portal([] {});
    EXPECT_EQ(portal.preferences().appearance, Appearance::system);
    EXPECT_LT(Clock::now() - begin, 20s) << "GIO itself would wait 25 s";
    change(service, "color-scheme", 1);
    EXPECT_TRUE(eventuallyInLoop([&] { return portal.preferences().appearance == Appearance::dark; }));
}

TEST(AppearancePortal, followsAPortalThatStartsLater) {
    EXPECT_EQ(AppearancePortal([] {}).preferences().appearance, Appearance::system) << "without a bus";
    const TestBus bus;
    int changes = 0;
    AppearancePortal portal([&changes] { ++changes; });
    EXPECT_EQ(portal.preferences().appearance, Appearance::system);
    const TestService service(bus, settingsPortal, Manner::obliging, scheme(1));
    EXPECT_TRUE(eventuallyInLoop([&] { return portal.preferences().appearance == Appearance::dark; }));
    EXPECT_EQ(changes, 1);
}

TEST(AppearancePortal, ignoresAnswersAfterItsDestruction) {
    const TestBus bus;
    TestService service(bus, settingsPortal, Manner::hanging, scheme(1));
    int changes = 0;
    auto portal = std::make_unique<AppearancePortal>([&changes] { ++changes; });
    ASSERT_TRUE(eventuallyInLoop([&] { return service.calls().size() == 2; }));
    service.answerHeldCalls();
    ASSERT_TRUE(eventually([] { return g_main_context_pending(nullptr); })) << "the answer has arrived";
    portal.reset();
    dispatchPending();
    EXPECT_EQ(changes, 0);
}

TEST(AppearancePortal, setsThePaletteWhileTheAppearanceIsSystem) {
    const TestBus bus;
    TestService service(bus, settingsPortal, Manner::obliging, scheme(1));
    int argumentCount = 0;
    const QGuiApplication application(argumentCount, nullptr);
    const QPalette before = QGuiApplication::palette();
    const auto isDark = [] { return QGuiApplication::palette().color(QPalette::Base).lightnessF() < 0.5; };

    Processes processes({});
    HoldingExecutor executor;
    FreedesktopDesktop desktop(processes, executor);
    desktop.setAppearance(Appearance::system);
    EXPECT_TRUE(QTest::qWaitFor(isDark));
    change(service, "color-scheme", 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QGuiApplication::palette() == before; }));

    desktop.setAppearance(Appearance::light);
    change(service, "color-scheme", 1);
    change(service, "contrast", 2);
    QTest::qWait(100);
    EXPECT_FALSE(isDark()) << "the appearance of the settings has precedence";
    EXPECT_FALSE(desktop.prefersReducedMotion());
    change(service, "reduced-motion", 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.prefersReducedMotion(); }));
    desktop.setAppearance(Appearance::system);
    EXPECT_TRUE(isDark()) << "a change in the meantime counts";
}

} // namespace kavendra
