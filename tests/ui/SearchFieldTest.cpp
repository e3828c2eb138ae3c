#include "ui/SearchField.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QStyleHints>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace kavendra {

namespace {

/// A focused field beside another widget in an active window. Each callback appends a word to `events`, each
/// debug line one to `log`.
class SearchFieldTest : public testing::Test {
protected:
    SearchFieldTest() {
        window.resize(600, 100);
        field.resize(300, 40);
        other.setGeometry(310, 0, 100, 40);
        field.setFocus();
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        const auto append = [this](const char* word) { return [this, word] { events += word; }; };
        field.onTextChange = [this](const std::string& text) { events += "text=" + text + " "; };
        field.onDebugLog = [this](std::string_view line) { log.append(line).append("\n"); };
        field.onSubmit = append("submit ");
        field.onMoveUp = append("up ");
        field.onMoveDown = append("down ");
        field.onMoveToBeginning = append("beginning ");
        field.onMoveToEnd = append("end ");
    }

    void compose(const QString& preedit, const QString& commit = {}) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QApplication::sendEvent(&field, &event);
    }

    std::string takeEvents() { return std::exchange(events, {}); }

    QWidget window;
    SearchField field{&window};
    QLineEdit other{&window};
    std::string events;
    std::string log;
};

} // namespace

TEST_F(SearchFieldTest, editsAreReportedAndShownTextIsNot) {
    QTest::keyClicks(&field, "ab");
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(takeEvents(), "text=a text=ab text=a ");
    EXPECT_EQ(log, "SearchField controlTextDidChange value=a\n"
                   "SearchField controlTextDidChange value=ab\n"
                   "SearchField controlTextDidChange value=a\n");
    field.home(false);
    field.showText("a");
    EXPECT_EQ(field.cursorPosition(), 0) << "the same text";
    field.showText("other");
    EXPECT_EQ(field.text(), "other");
    EXPECT_EQ(takeEvents(), "");
}

TEST_F(SearchFieldTest, undoHistoryEndsWithTheActiveWindowAndSelectionsRemain) {
    for (const auto& [start, length] : {std::pair{1, 0}, {1, 2}, {3, -2}}) {
        field.clear();
        QTest::keyClicks(&field, "abcd");
        takeEvents();
        length == 0 ? field.setCursorPosition(start) : field.setSelection(start, length);
        const QString selected = field.selectedText();
        ASSERT_TRUE(field.isUndoAvailable());
        QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
        QApplication::sendEvent(&field, &menu);
        EXPECT_TRUE(field.isUndoAvailable());
        QFocusEvent otherWindow(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(&field, &otherWindow);
        EXPECT_FALSE(field.isUndoAvailable());
        EXPECT_EQ(field.text(), "abcd");
        EXPECT_EQ(field.selectedText(), selected);
        EXPECT_EQ(field.cursorPosition(), start + length);
        EXPECT_EQ(takeEvents(), "");
    }
}

TEST_F(SearchFieldTest, keysForTheTableDoNotEdit) {
    QTest::keyClicks(&field, "ab");
    takeEvents();
    using Case = std::tuple<Qt::Key, Qt::KeyboardModifiers, const char*>;
    for (const auto& [key, modifiers, expected] :
         {Case{Qt::Key_Return, Qt::NoModifier, "submit "}, Case{Qt::Key_Enter, Qt::KeypadModifier, "submit "},
          Case{Qt::Key_Up, Qt::NoModifier, "up "}, Case{Qt::Key_Down, Qt::KeypadModifier, "down "},
          Case{Qt::Key_Up, Qt::ControlModifier, "beginning "},
          Case{Qt::Key_Down, Qt::ControlModifier, "end "},
          Case{Qt::Key_Home, Qt::ControlModifier, "beginning "},
          Case{Qt::Key_End, Qt::ControlModifier, "end "}, Case{Qt::Key_Left, Qt::NoModifier, ""},
          Case{Qt::Key_Home, Qt::NoModifier, ""}}) {
        QTest::keyClick(&field, key, modifiers);
        EXPECT_EQ(takeEvents(), expected) << key;
    }
    EXPECT_EQ(field.text(), "ab");
    EXPECT_EQ(field.cursorPosition(), 0) << "Left and Home move the caret";
}

TEST_F(SearchFieldTest, escapeAndTheClearButtonClear) {
    QToolButton& button = *field.findChildren<QToolButton*>().back();
    EXPECT_EQ(button.accessibleName(), "Clear");
    EXPECT_FALSE(button.isVisible());
    field.showText("a");
    EXPECT_TRUE(button.isVisible());
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(takeEvents(), "text= ");
    EXPECT_FALSE(button.isVisible());

    field.showText("a");
    compose("に");
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), "a") << "the key is the input method's";
    compose("");
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), "");
}

TEST_F(SearchFieldTest, compositionReceivesAllKeys) {
    QTest::keyClicks(&field, "a");
    compose("に");
    compose("にほ");
    takeEvents();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Return, Qt::Key_Enter})
        QTest::keyClick(&field, key);
    EXPECT_EQ(takeEvents(), "");
    compose("", "日本");
    EXPECT_EQ(takeEvents(), "text=a日本 ");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(takeEvents(), "submit ");
    compose("に");
    compose(""); // cancelled
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(takeEvents(), "submit ");
    EXPECT_EQ(field.text(), "a日本");
}

namespace {

/// The field holds two words, and the other widget has the focus.
class SearchFieldFocusTest : public SearchFieldTest {
protected:
    SearchFieldFocusTest() {
        field.showText("abc def");
        field.setCursorPosition(1);
        const QPointF caret = field.inputMethodQuery(Qt::ImCursorRectangle).toRectF().center();
        inFirstWord = field.mapTo(&window, caret.toPoint());
        field.end(false);
        other.setFocus();
        log.clear();
    }

    QString selectedAfterEvents() {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
        return field.selectedText();
    }

    /// Presses through the window, so that Qt moves the focus and detects double clicks. `pause` is the time
    /// since the press before, in milliseconds.
    void press(Qt::MouseButton button, int pause, const QPoint& position) {
        lastPress = std::max(lastPress, QTest::lastMouseTimestamp) + pause;
        QTest::lastMouseTimestamp = lastPress - 1; // QTest adds one
        QTest::mousePress(window.windowHandle(), button, {}, position);
    }
    void click(Qt::MouseButton button = Qt::LeftButton, int pause = 1000) {
        click(button, pause, inFirstWord);
    }
    void click(Qt::MouseButton button, int pause, const QPoint& position) {
        press(button, pause, position);
        if (QWidget* menu = QApplication::activePopupWidget())
            menu->close();
        QTest::mouseRelease(window.windowHandle(), button, {}, position);
        QTest::lastMouseTimestamp = lastPress;
    }

    void leaveAndReturn(Qt::FocusReason reason) {
        for (const QEvent::Type type : {QEvent::FocusOut, QEvent::FocusIn}) {
            QFocusEvent event(type, reason);
            QApplication::sendEvent(&field, &event);
        }
    }

    QPoint inFirstWord; ///< in the window
    int lastPress = 0;
};

} // namespace

TEST_F(SearchFieldFocusTest, focusSelectsTheTextIfTheSettingIsOn) {
    using Case = std::tuple<const char*, bool, std::function<void()>, const char*>;
    const auto focus = [this](Qt::FocusReason reason) { return [this, reason] { field.setFocus(reason); }; };
    const auto loseRelease = [this] {
        press(Qt::LeftButton, 1000, inFirstWord);
        EXPECT_EQ(selectedAfterEvents(), "");
        leaveAndReturn(Qt::ActiveWindowFocusReason);
    };
    const auto deselectAndReturn = [this](Qt::FocusReason reason) {
        field.setFocus();
        selectedAfterEvents();
        field.deselect();
        leaveAndReturn(reason);
    };
    for (const auto& [name, selectAllOnFocus, gainFocus, selected] :
         {Case{"off, Tab", false, focus(Qt::TabFocusReason), ""},
          Case{"off, click", false, [this] { click(); }, ""},
          Case{"Tab", true, focus(Qt::TabFocusReason), "abc def"},
          Case{"Tab, then a composition", true, [this] { field.setFocus(Qt::TabFocusReason), compose("に"); },
               ""},
          Case{"click", true, [this] { click(); }, "abc def"},
          Case{"second click", true, [this] { click(), selectedAfterEvents(), click(); }, ""},
          Case{"right click", true, [this] { click(Qt::RightButton); }, "abc def"},
          Case{"middle click", true, [this] { click(Qt::MiddleButton); }, ""},
          Case{"click after a lost release", true, [&] { loseRelease(), click(); }, ""},
          Case{"return to the window", true, [&] { deselectAndReturn(Qt::ActiveWindowFocusReason); },
               "abc def"},
          Case{"closed menu", true, [&] { deselectAndReturn(Qt::PopupFocusReason); }, ""},
          Case{"double click", true, [this] { click(), click(Qt::LeftButton, 100); }, "abc"},
          Case{"second click that brings the focus", true,
               [this] { click(), other.setFocus(), click(Qt::LeftButton, 100); }, "abc"}}) {
        other.setFocus();
        field.end(false);
        field.selectAllOnFocus = selectAllOnFocus;
        gainFocus();
        EXPECT_EQ(selectedAfterEvents(), selected) << name;
    }
}

TEST_F(SearchFieldFocusTest, focusSelectionAndClicksAreLogged) {
    field.selectAllOnFocus = true;
    click();
    EXPECT_EQ(selectedAfterEvents(), "abc def");
    EXPECT_EQ(
        log,
        "SearchField becomeFirstResponder start selectAllOnFocus=true shouldSelectAllAfterMouseDown=false\n"
        "SearchField becomeFirstResponder end becameFirstResponder=true\n"
        "SearchField becomeFirstResponder currentEventType=MouseButtonPress isMouseDrivenFocus=true\n"
        "SearchField mouseDown clickCount=1 shouldSelectAllAfterMouseDown=true\n"
        "SearchField selectAllText via editor before={1, 0}\n"
        "SearchField selectAllText via editor after={0, 7}\n");
    other.setFocus();
    log.clear();
    field.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(
        log.contains("SearchField becomeFirstResponder currentEventType=none isMouseDrivenFocus=false\n"));
    log.clear();
    leaveAndReturn(Qt::ActiveWindowFocusReason);
    EXPECT_EQ(log, "SearchField windowDidBecomeKey reselect\n");
}

TEST_F(SearchFieldFocusTest, clicksAreCountedByTimeAndPlace) {
    const QPoint aside =
        inFirstWord + QPoint(0, QGuiApplication::styleHints()->mouseDoubleClickDistance() + 1);
    using Case = std::tuple<Qt::MouseButton, int, QPoint, const char*>;
    for (const auto& [button, pause, position, count] :
         {Case{Qt::LeftButton, 1000, inFirstWord, "1"}, Case{Qt::LeftButton, 100, inFirstWord, "2"},
          Case{Qt::RightButton, 10, inFirstWord, "2"}, Case{Qt::LeftButton, 100, inFirstWord, "3"},
          Case{Qt::LeftButton, 100, inFirstWord, "4"}, Case{Qt::LeftButton, 100, aside, "1"},
          Case{Qt::LeftButton, 100, aside, "2"}, Case{Qt::LeftButton, 1000, aside, "1"}}) {
        click(button, pause, position);
        EXPECT_EQ(log.substr(log.rfind("clickCount=") + 11, 1), count);
    }
}

} // namespace kavendra
