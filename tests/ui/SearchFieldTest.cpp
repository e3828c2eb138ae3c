#include "ui/SearchField.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace kavendra {

namespace {

/// A field whose callbacks each append a word to `events`.
class SearchFieldTest : public testing::Test {
protected:
    SearchFieldTest() {
        field.onTextChange = [this](const std::string& text) { events += "text=" + text + " "; };
        field.onDebugLog = [this](std::string_view line) { debugLines.emplace_back(line); };
        field.onSubmit = [this] { events += "submit "; };
        field.onMoveUp = [this] { events += "up "; };
        field.onMoveDown = [this] { events += "down "; };
        field.onMoveToBeginning = [this] { events += "beginning "; };
        field.onMoveToEnd = [this] { events += "end "; };
        field.show();
        field.setFocus();
    }

    void compose(const QString& preedit, const QString& commit = {}) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QApplication::sendEvent(&field, &event);
    }

    std::string takeEvents() { return std::exchange(events, {}); }

    SearchField field;
    std::string events;
    std::vector<std::string> debugLines;
};

} // namespace

TEST_F(SearchFieldTest, everyEditIsReportedAtOnce) {
    QTest::keyClicks(&field, "ab");
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(takeEvents(), "text=a text=ab text=a ");
    EXPECT_EQ(debugLines, (std::vector<std::string>{"SearchField controlTextDidChange value=a",
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

TEST_F(SearchFieldTest, aHeldEnterLaunchesOnce) {
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QApplication::sendEvent(&field, &repeated);
    EXPECT_EQ(takeEvents(), "");
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

} // namespace kavendra
