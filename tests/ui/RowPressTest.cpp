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
    using Case = std::tuple<const char*, std::vector<Qt::Key>, Calls, const char*, std::string>;
    const Calls launch{"showDirectory /"};
    for (const auto& [name, keys, calls, text, selected] :
         {Case{"letters", {Qt::Key_A, Qt::Key_L}, launch, "al", "alpha"},
          Case{"a selection key", {Qt::Key_Up}, launch, "", "beta"},
          Case{"Enter", {Qt::Key_Return, Qt::Key_Enter}, launch, "", "gamma"},
          Case{"Escape", {Qt::Key_Escape, Qt::Key_Escape, Qt::Key_A}, {}, "a", "gamma"},
          Case{"Escape, then Enter", {Qt::Key_Escape, Qt::Key_Return}, launch, "", "gamma"}}) {
        SCOPED_TRACE(name);
        field.clear();
        desktop.calls.clear();
        press();
        for (const Qt::Key key : keys)
            type(key);
        EXPECT_EQ(field.text(), "");
        EXPECT_TRUE(desktop.calls.empty());
        EXPECT_EQ(selectedTitle(), "gamma");
        release();
        QCoreApplication::processEvents();
        EXPECT_EQ(desktop.calls, calls);
        EXPECT_EQ(field.text(), text);
        EXPECT_EQ(selectedTitle(), selected);
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
    using Case = std::tuple<const char*, std::function<void()>, std::function<void()>, std::string>;
    for (const auto& [name, lose, restore, text] :
         {Case{"a dialog", [this] { content.reportFailure("a failure"); }, [this] { type(Qt::Key_Escape); },
               "l"},
          Case{"another window", [&] { other.show(), other.activateWindow(); }, [&] { other.hide(); }, "al"},
          Case{"a dialog that is not active", [&] { dialog.open(); }, [&] { dialog.hide(); }, "l"},
          Case{"no event at all", [] {},
               [this] {
                   QMouseEvent hover(QEvent::MouseMove, {5, 5}, {5, 5}, Qt::NoButton, {}, {});
                   QApplication::sendEvent(window.windowHandle(), &hover);
               },
               "al"}}) {
        SCOPED_TRACE(name);
        field.clear();
        press();
        type(Qt::Key_A);
        lose();
        QCoreApplication::processEvents();
        restore();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&field, Qt::Key_L);
        QCoreApplication::processEvents();
        EXPECT_EQ(field.text().toStdString(), text);
        release();
        EXPECT_TRUE(desktop.calls.empty());
    }
}

} // namespace kavendra
