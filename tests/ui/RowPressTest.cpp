#include "tests/ui/MainWindowFixture.h"

#include <QApplication>
#include <QDialog>
#include <QInputMethodEvent>

namespace kavendra {

namespace {

/// Sends mouse and keyboard events to the window, like a window system. The pressed row is gamma's, whose
/// launch is the call "showDirectory /".
class RowPressTest : public MainWindowFixture {
protected:
    RowPressTest() { EXPECT_TRUE(QTest::qWaitForWindowActive(&window)); }

    QPoint gamma() const { return table.viewport()->mapTo(&window, cell(2, 0).center()); }
    void press() { QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, gamma()); }
    void release() { QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, gamma()); }
    void type(Qt::Key key) { QTest::keyClick(QGuiApplication::focusWindow(), key); }
};

} // namespace

TEST_F(RowPressTest, keysDuringAPressAreDeliveredAfterIt) {
    struct Case {
        const char* name;
        std::vector<Qt::Key> keys;
        Calls calls;
        std::string text;
        std::string selected;
    };
    for (const Case& c :
         {Case{"letters", {Qt::Key_A, Qt::Key_L}, Calls{"showDirectory /"}, "al", "alpha"},
          Case{"a selection key", {Qt::Key_Up}, Calls{"showDirectory /"}, "", "beta"},
          Case{"Enter", {Qt::Key_Return, Qt::Key_Enter}, Calls{"showDirectory /"}, "", "gamma"},
          Case{"Escape", {Qt::Key_Escape, Qt::Key_Escape, Qt::Key_A}, {}, "a", "gamma"},
          Case{"Escape, then Enter",
               {Qt::Key_Escape, Qt::Key_Return},
               Calls{"showDirectory /"},
               "",
               "gamma"}}) {
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
        EXPECT_EQ(desktop.calls, c.calls);
        EXPECT_EQ(field.text().toStdString(), c.text);
        EXPECT_EQ(selectedTitle(), c.selected);
    }
}

// The release, a key and the next press may be queued together.
TEST_F(RowPressTest, keysAndCompositionsKeepTheirOrderAcrossPresses) {
    QWidget& rows = *table.viewport();
    const QPoint position = cell(2, 0).center();
    press();
    type(Qt::Key_A);
    QInputMethodEvent composition;
    composition.setCommitString("é");
    QApplication::sendEvent(&field, &composition);
    QTest::mouseRelease(&rows, Qt::LeftButton, {}, position);
    QKeyEvent queued(QEvent::KeyPress, Qt::Key_B, {}, "b");
    QCoreApplication::sendEvent(window.windowHandle(), &queued);
    QTest::mousePress(&rows, Qt::LeftButton, {}, position);
    QCoreApplication::processEvents();
    EXPECT_EQ(field.text(), "");
    type(Qt::Key_C);
    release();
    QCoreApplication::processEvents();
    EXPECT_EQ(field.text(), "aébc");
    EXPECT_EQ(desktop.calls, (Calls{"showDirectory /", "showDirectory /"}));
}

TEST_F(RowPressTest, pressWhoseReleaseIsLostEndsWithoutALaunch) {
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
