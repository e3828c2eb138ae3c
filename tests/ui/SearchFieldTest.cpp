#include "ui/SearchField.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace kavendra {

namespace {

/// A field that has the focus, beside another widget in a window that is active. Its callbacks each append a
/// word to `events`.
class SearchFieldTest : public testing::Test {
protected:
    SearchFieldTest() {
        window.resize(600, 100);
        field.resize(300, 40);
        other.setGeometry(310, 0, 100, 40);
        field.setFocus();
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        const auto event = [this](const char* word) { return [this, word] { events += word; }; };
        field.onTextChange = [this](const std::string& text) { events += "text=" + text + " "; };
        field.onDebugLog = [this](std::string_view line) { lines.emplace_back(line); };
        field.onSubmit = event("submit ");
        field.onMoveUp = event("up ");
        field.onMoveDown = event("down ");
        field.onMoveToBeginning = event("beginning ");
        field.onMoveToEnd = event("end ");
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
    std::vector<std::string> lines;
};

} // namespace

TEST_F(SearchFieldTest, everyEditIsReportedAtOnce) {
    QTest::keyClicks(&field, "ab");
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(takeEvents(), "text=a text=ab text=a ");
    EXPECT_EQ(lines, (std::vector<std::string>{"SearchField controlTextDidChange value=a",
                                               "SearchField controlTextDidChange value=ab",
                                               "SearchField controlTextDidChange value=a"}));
}

TEST_F(SearchFieldTest, keysThatMeanTheTableDoNotEdit) {
    QTest::keyClicks(&field, "ab");
    takeEvents();
    struct Case {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* expected;
    };
    for (const Case& c :
         {Case{Qt::Key_Return, Qt::NoModifier, "submit "}, Case{Qt::Key_Enter, Qt::KeypadModifier, "submit "},
          Case{Qt::Key_Up, Qt::NoModifier, "up "}, Case{Qt::Key_Down, Qt::KeypadModifier, "down "},
          Case{Qt::Key_Up, Qt::ControlModifier, "beginning "}, Case{Qt::Key_End, Qt::ControlModifier, "end "},
          Case{Qt::Key_Left, Qt::NoModifier, ""}, Case{Qt::Key_Home, Qt::NoModifier, ""},
          Case{Qt::Key_Escape, Qt::NoModifier, ""}}) {
        SCOPED_TRACE(c.key);
        QTest::keyClick(&field, c.key, c.modifiers);
        EXPECT_EQ(takeEvents(), c.expected);
    }
    EXPECT_EQ(field.text(), "ab");
    EXPECT_EQ(field.cursorPosition(), 0) << "Left and Home have moved the caret";
}

TEST_F(SearchFieldTest, aCompositionNeitherLaunchesNorMovesNorLosesText) {
    QTest::keyClicks(&field, "a");
    compose("に");
    compose("にほ");
    takeEvents();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Return, Qt::Key_Enter})
        QTest::keyClick(&field, key);
    EXPECT_EQ(takeEvents(), "");
    compose("", "日本");
    EXPECT_EQ(takeEvents(), "text=a日本 ");
    EXPECT_EQ(field.text(), "a日本");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(takeEvents(), "submit ");
}

TEST_F(SearchFieldTest, aCompositionThatIsGivenUpFreesTheKeysAgain) {
    compose("に");
    compose("");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(takeEvents(), "submit ");
    EXPECT_EQ(field.text(), "");
}

TEST_F(SearchFieldTest, showingTheSameTextLeavesTheCaretAlone) {
    QTest::keyClicks(&field, "abc");
    field.setCursorPosition(1);
    takeEvents();
    field.showText("abc");
    EXPECT_EQ(field.cursorPosition(), 1);
    field.showText("other");
    EXPECT_EQ(field.text(), "other");
    EXPECT_EQ(takeEvents(), "") << "what came from outside is not reported back";
}

namespace {

/// The field holds some text, and the other widget has the focus.
class SearchFieldFocusTest : public SearchFieldTest {
protected:
    SearchFieldFocusTest() {
        field.showText("abc def");
        other.setFocus();
    }

    QString selectedAfterEvents() {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
        return field.selectedText();
    }

    /// Through the window, so that the application moves the focus and detects double clicks. Times are in
    /// milliseconds since the press before.
    void press(Qt::MouseButton button = Qt::LeftButton, int pause = 1000, QPoint position = inFirstWord) {
        lastPress = std::max(lastPress, QTest::lastMouseTimestamp) + pause;
        QTest::lastMouseTimestamp = lastPress - 1; // QTest adds one
        QTest::mousePress(window.windowHandle(), button, {}, position);
    }
    void release(Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(window.windowHandle(), button, {}, inFirstWord);
        QTest::lastMouseTimestamp = lastPress;
    }
    void click(Qt::MouseButton button = Qt::LeftButton, int pause = 1000, QPoint position = inFirstWord) {
        press(button, pause, position);
        if (QWidget* menu = QApplication::activePopupWidget())
            menu->close();
        release(button);
    }

    static constexpr QPoint inFirstWord{38, 20}; ///< behind the icon
    int lastPress = 0;
};

} // namespace

TEST_F(SearchFieldFocusTest, withoutTheSettingNothingIsSelectedByItself) {
    for (const Qt::FocusReason reason :
         {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason}) {
        field.setFocus(reason);
        EXPECT_EQ(selectedAfterEvents(), "") << reason;
        other.setFocus();
    }
    lines.clear();
    click();
    EXPECT_EQ(selectedAfterEvents(), "");
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "SearchField becomeFirstResponder start selectAllOnFocus=false "
                         "shouldSelectAllAfterMouseDown=false",
                         "SearchField becomeFirstResponder end becameFirstResponder=true",
                         "SearchField mouseDown clickCount=1 shouldSelectAllAfterMouseDown=false"}));
}

TEST_F(SearchFieldFocusTest, withTheSettingTabSelectsAll) {
    field.selectAllOnFocus = true;
    field.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(selectedAfterEvents(), "abc def");
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[2], "SearchField becomeFirstResponder currentEventType=none isMouseDrivenFocus=false");
    EXPECT_EQ(lines[3], "SearchField selectAllText via editor before={7, 0}");
    EXPECT_EQ(lines[4], "SearchField selectAllText via editor after={0, 7}");
}

TEST_F(SearchFieldFocusTest, aClickThatBringsTheFocusSelectsAllAndALaterOneDoesNot) {
    field.selectAllOnFocus = true;
    press();
    EXPECT_EQ(selectedAfterEvents(), "") << "not before the release";
    release();
    EXPECT_EQ(selectedAfterEvents(), "abc def");
    click();
    EXPECT_EQ(selectedAfterEvents(), "");
}

TEST_F(SearchFieldFocusTest, onlyTheLeftButtonBringsTheFocusAsAClick) {
    field.selectAllOnFocus = true;
    struct Case {
        Qt::MouseButton button;
        const char* selected;
    };
    for (const Case& c : {Case{Qt::RightButton, "abc def"}, Case{Qt::MiddleButton, ""}}) {
        SCOPED_TRACE(c.button);
        other.setFocus();
        lines.clear();
        click(c.button);
        EXPECT_EQ(selectedAfterEvents(), c.selected);
        ASSERT_GE(lines.size(), 3U);
        EXPECT_EQ(lines[2], "SearchField becomeFirstResponder currentEventType=MouseButtonPress "
                            "isMouseDrivenFocus=false");
        lines.clear();
        click();
        EXPECT_EQ(selectedAfterEvents(), "") << "the field has had the focus";
        EXPECT_EQ(lines, std::vector<std::string>{
                             "SearchField mouseDown clickCount=1 shouldSelectAllAfterMouseDown=false"});
    }
}

TEST_F(SearchFieldFocusTest, aPressWhoseReleaseIsLostLeavesNothingBehind) {
    field.selectAllOnFocus = true;
    press();
    QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&field, &away);
    QApplication::sendEvent(&field, &back);
    click();
    EXPECT_EQ(selectedAfterEvents(), "");
}

TEST_F(SearchFieldFocusTest, clicksAreCountedByTimeAndPlace) {
    const QPoint aside = inFirstWord + QPoint(0, 8);
    click();
    click(Qt::LeftButton, 100);
    click(Qt::RightButton, 10);
    click(Qt::LeftButton, 100);
    click(Qt::LeftButton, 100);
    click(Qt::LeftButton, 100, aside);
    click(Qt::LeftButton, 100, aside);
    click(Qt::LeftButton, 1000, aside);
    std::string counts;
    for (const std::string& line : lines)
        if (const auto at = line.find("clickCount="); at != std::string::npos)
            counts += line.substr(at + 11, 2);
    EXPECT_EQ(counts, "1 2 3 4 1 2 1 ");
}

TEST_F(SearchFieldFocusTest, aDoubleClickThatBringsTheFocusLeavesTheWord) {
    field.selectAllOnFocus = true;
    click();
    click(Qt::LeftButton, 100);
    EXPECT_EQ(selectedAfterEvents(), "abc");
}

TEST_F(SearchFieldFocusTest, aWindowThatIsActivatedAgainSelectsAllAgain) {
    field.setFocus(Qt::OtherFocusReason);
    field.selectAllOnFocus = true;
    QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    field.deselect();
    QApplication::sendEvent(&field, &away);
    lines.clear();
    QApplication::sendEvent(&field, &back);
    EXPECT_EQ(selectedAfterEvents(), "abc def");
    EXPECT_EQ(lines.front(), "SearchField windowDidBecomeKey reselect");
    QFocusEvent menuClosed(QEvent::FocusIn, Qt::PopupFocusReason);
    field.deselect();
    QApplication::sendEvent(&field, &menuClosed);
    EXPECT_EQ(selectedAfterEvents(), "") << "a menu that closes is no return to the window";
}

TEST_F(SearchFieldFocusTest, selectingNeverEndsAComposition) {
    field.selectAllOnFocus = true;
    field.setFocus(Qt::OtherFocusReason);
    compose("に");
    EXPECT_EQ(selectedAfterEvents(), "");
}

} // namespace kavendra
