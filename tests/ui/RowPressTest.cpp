#include "tests/ui/MainWindowFixture.h"

#include <QApplication>
#include <QDialog>
#include <QInputMethodEvent>

namespace kavendra {

namespace {

using Calls = std::vector<std::string>;

/// Mouse and keyboard events go through the window, as those of the window system do. The pressed row is
/// gamma's, whose launch is the call "showDirectory /".
class RowPressTest : public MainWindowFixture {
protected:
    RowPressTest() { EXPECT_TRUE(QTest::qWaitForWindowActive(&window)); }

    QPoint gamma() {
        const QPoint center = table.visualRect(table.model()->index(2, 0)).center();
        return table.viewport()->mapTo(&window, center);
    }
    void press() { QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, gamma()); }
    void release() { QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, gamma()); }
    void type(Qt::Key key) { QTest::keyClick(QGuiApplication::focusWindow(), key); }
};

} // namespace

TEST_F(RowPressTest, whatIsTypedDuringAPressIsHandledAfterIt) {
    struct Case {
        const char* name;
        std::vector<Qt::Key> keys;
        std::string calls;
        std::string text;
        std::string selected;
    };
    for (const Case& c :
         {Case{"letters", {Qt::Key_A, Qt::Key_L}, "showDirectory / ", "al", "alpha"},
          Case{"a selection key", {Qt::Key_Up}, "showDirectory / ", "", "beta"},
          Case{"Enter", {Qt::Key_Return, Qt::Key_Enter}, "showDirectory / ", "", "gamma"},
          Case{"Escape", {Qt::Key_Escape, Qt::Key_Escape, Qt::Key_A}, "", "a", "gamma"},
          Case{"Escape, then Enter", {Qt::Key_Escape, Qt::Key_Return}, "showDirectory / ", "", "gamma"}}) {
        SCOPED_TRACE(c.name);
        field.clear();
        desktop.calls.clear();
        press();
        for (const Qt::Key key : c.keys)
            type(key);
        EXPECT_EQ(field.text(), "");
        EXPECT_TRUE(desktop.calls.empty());
        EXPECT_EQ(selectedTitle(), "gamma");
        release();
        QCoreApplication::processEvents();
        std::string calls;
        for (const std::string& call : desktop.calls)
            calls += call + " ";
        EXPECT_EQ(calls, c.calls);
        EXPECT_EQ(field.text().toStdString(), c.text);
        EXPECT_EQ(selectedTitle(), c.selected);
    }
}

TEST_F(RowPressTest, anInputMethodWaitsInOrderWithTheKeys) {
    press();
    type(Qt::Key_A);
    QInputMethodEvent composed;
    composed.setCommitString("é");
    QApplication::sendEvent(&field, &composed);
    type(Qt::Key_B);
    EXPECT_EQ(field.text(), "");
    release();
    QCoreApplication::processEvents();
    EXPECT_EQ(field.text(), "aéb");
    EXPECT_EQ(desktop.calls, Calls{"showDirectory /"});
}

// The release and what follows it may be queued together.
TEST_F(RowPressTest, keysKeepTheirOrderAcrossPressesInQuickSuccession) {
    QWidget& rows = *table.viewport();
    const QPoint position = rows.mapFrom(&window, gamma());
    press();
    type(Qt::Key_A);
    QTest::mouseRelease(&rows, Qt::LeftButton, {}, position);
    QKeyEvent queued(QEvent::KeyPress, Qt::Key_B, {}, "b");
    QCoreApplication::sendEvent(window.windowHandle(), &queued);
    QTest::mousePress(&rows, Qt::LeftButton, {}, position);
    QCoreApplication::processEvents();
    EXPECT_EQ(field.text(), "");
    type(Qt::Key_C);
    release();
    QCoreApplication::processEvents();
    EXPECT_EQ(field.text(), "abc");
    EXPECT_EQ(desktop.calls, (Calls{"showDirectory /", "showDirectory /"}));
}

TEST_F(RowPressTest, anotherButtonDoesNotDisturbAPress) {
    press();
    QTest::mouseClick(window.windowHandle(), Qt::RightButton, {}, gamma());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    release();
    EXPECT_EQ(desktop.calls, Calls{"showDirectory /"});
}

TEST_F(RowPressTest, aPressWhoseReleaseIsLostEndsWithoutLaunching) {
    QWidget other;
    QDialog dialog(&window);
    dialog.setAttribute(Qt::WA_ShowWithoutActivating);
    struct Case {
        const char* name;
        std::function<void()> lose;
        std::function<void()> restore;
        std::string text = "al";
    };
    for (const Case& c :
         {Case{"a dialog", [this] { content.reportFailure("a failure"); }, [this] { type(Qt::Key_Escape); },
               "l"},
          Case{"another window", [&] { other.show(), other.activateWindow(); }, [&] { other.hide(); }},
          Case{"a dialog that is not active", [&] { dialog.open(); }, [&] { dialog.hide(); }, "l"},
          Case{"no event at all", [] {},
               [this] {
                   QMouseEvent hover(QEvent::MouseMove, {5, 5}, {5, 5}, Qt::NoButton, {}, {});
                   QApplication::sendEvent(window.windowHandle(), &hover);
               }}}) {
        SCOPED_TRACE(c.name);
        field.clear();
        press();
        type(Qt::Key_A);
        c.lose();
        QCoreApplication::processEvents();
        c.restore();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&field, Qt::Key_L);
        QCoreApplication::processEvents();
        EXPECT_EQ(field.text().toStdString(), c.text);
        release();
        EXPECT_TRUE(desktop.calls.empty());
    }
}

} // namespace kavendra
