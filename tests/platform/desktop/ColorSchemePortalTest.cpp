#include "platform/desktop/ColorSchemePortal.h"

#include "platform/desktop/FreedesktopDesktop.h"
#include "tests/support/TestPortal.h"

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

/// Lets events happen for at most five seconds, until the condition holds; returns whether it does.
bool eventuallyInLoop(const std::function<bool()>& condition) {
    const auto deadline = Clock::now() + 5s;
    while (!condition() && Clock::now() < deadline)
        g_main_context_iteration(nullptr, FALSE);
    return condition();
}

} // namespace

TEST(ColorSchemePortal, readsWhatThePersonPrefers) {
    struct Case {
        std::uint32_t scheme;
        TestPortal::Manner manner;
        Appearance expected;
    };
    using enum TestPortal::Manner;
    for (const auto& [scheme, manner, expected] : {
             Case{0, obliging, Appearance::system},
             Case{1, obliging, Appearance::dark},
             Case{2, obliging, Appearance::light},
             Case{3, obliging, Appearance::system},
             Case{1, confused, Appearance::system},
             Case{1, knowsNone, Appearance::system},
         }) {
        const TestBus bus;
        const TestPortal service(bus, scheme, manner);
        const ColorSchemePortal portal([] {});
        EXPECT_EQ(portal.preferred(), expected) << scheme;
    }
}

TEST(ColorSchemePortal, aPortalThatHangsDoesNotHoldTheWindowUp) {
    const TestBus bus;
    TestPortal service(bus, 1, TestPortal::Manner::hanging);
    const auto begin = Clock::now();
    const ColorSchemePortal portal([] {});
    EXPECT_LT(Clock::now() - begin, 500ms);
    EXPECT_EQ(portal.preferred(), Appearance::system);
    service.setColorScheme(1);
    EXPECT_TRUE(eventuallyInLoop([&] { return portal.preferred() == Appearance::dark; }));
}

TEST(ColorSchemePortal, aPortalThatStartsLaterIsListenedTo) {
    const TestBus bus;
    int changes = 0;
    const ColorSchemePortal portal([&changes] { ++changes; });
    EXPECT_EQ(portal.preferred(), Appearance::system);
    const TestPortal service(bus, 1);
    EXPECT_TRUE(eventuallyInLoop([&] { return portal.preferred() == Appearance::dark; }));
    EXPECT_EQ(changes, 1);
}

TEST(ColorSchemePortal, doesWithoutABus) {
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    EXPECT_EQ(ColorSchemePortal([] {}).preferred(), Appearance::system);
}

TEST(ColorSchemePortal, anAnswerThatComesTooLateTouchesNothing) {
    const TestBus bus;
    const TestPortal service(bus, 1);
    int changes = 0;
    auto portal = std::make_unique<ColorSchemePortal>([&changes] { ++changes; });
    ASSERT_TRUE(eventuallyInLoop([&] { return service.readCount() == 2; }));
    g_usleep(50000); // the answer is there, but nobody has been told
    portal.reset();
    const auto deadline = Clock::now() + 100ms;
    eventuallyInLoop([&] { return Clock::now() > deadline; });
    EXPECT_EQ(changes, 0);
}

TEST(ColorSchemePortal, theApplicationFollowsItWhileTheAppearanceIsThatOfTheSystem) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const TestBus bus;
    TestPortal service(bus, 1);
    int argumentCount = 0;
    const QGuiApplication application(argumentCount, nullptr);
    const QPalette before = QGuiApplication::palette();
    const auto isDark = [] { return QGuiApplication::palette().color(QPalette::Base).lightnessF() < 0.5; };

    Processes processes({});
    FreedesktopDesktop desktop(processes);
    desktop.setAppearance(Appearance::light);
    EXPECT_FALSE(isDark());
    desktop.setAppearance(Appearance::system);
    EXPECT_TRUE(isDark());
    service.setColorScheme(2);
    // Qt's own event loop, which is what delivers it in the program.
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isDark(); }));
    service.setColorScheme(1);
    EXPECT_TRUE(QTest::qWaitFor(isDark));
    service.setColorScheme(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QGuiApplication::palette() == before; }));

    desktop.setAppearance(Appearance::light);
    service.setColorScheme(1);
    service.changeSomethingElse();
    QTest::qWait(100);
    EXPECT_FALSE(isDark()) << "a choice of one's own stands above the desktop's";
    desktop.setAppearance(Appearance::system);
    EXPECT_TRUE(isDark()) << "what was said meanwhile counts";
}

} // namespace kavendra
