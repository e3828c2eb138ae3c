#include "ui/MainWindow.h"

#include "tests/ui/MainWindowFixture.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QScreen>
#include <QTextEdit>

namespace kavendra {

namespace {

class MainWindowTest : public MainWindowFixture {
protected:
    /// Sends the event of a pointer that rests on a part of a widget. Returns the tooltip that is shown then,
    /// nullptr without one.
    static QWidget* toolTip(QWidget& widget, const QRect& area) {
        QHelpEvent event(QEvent::ToolTip, area.center(), widget.mapToGlobal(area.center()));
        QApplication::sendEvent(&widget, &event);
        for (QWidget* each : QApplication::topLevelWidgets())
            if (each->objectName() == "toolTip" && each->isVisible())
                return each;
        return nullptr;
    }

    MenuButton& folderButton = bar.folderButton();
};

} // namespace

TEST_F(MainWindowTest, enterLaunchesFromTheRowsOfTheLastKeystroke) {
    // All events are queued before the first one is handled.
    for (const QChar letter : QStringLiteral("gamma"))
        QCoreApplication::postEvent(&field,
                                    new QKeyEvent(QEvent::KeyPress, letter.toUpper().unicode(), {}, letter));
    QCoreApplication::postEvent(&field, new QKeyEvent(QEvent::KeyPress, Qt::Key_Return, {}, "\r"));
    QCoreApplication::processEvents();
    EXPECT_EQ(desktop.calls, Calls{"showDirectory /"});
}

TEST_F(MainWindowTest, searchFieldKeepsTheFocusDuringClicks) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClicks(QApplication::focusWidget(), "ga");
    QTest::mouseClick(table.horizontalHeader()->viewport(), Qt::LeftButton);
    QTest::mouseClick(table.viewport(), Qt::RightButton, {}, cell(0, 0).center());
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, cell(0, 0).center());
    QTest::keyClicks(QApplication::focusWidget(), "mm");
    EXPECT_EQ(field.text(), "gamm");
    EXPECT_EQ(desktop.calls, Calls{"showDirectory /"});
}

TEST_F(MainWindowTest, windowKeysWorkInFieldAndTable) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    using Case = std::tuple<Qt::Key, Qt::KeyboardModifiers, const char*>;
    for (QWidget* focused : {static_cast<QWidget*>(&field), static_cast<QWidget*>(&table)})
        for (const auto& [key, modifiers, outcome] :
             {Case{Qt::Key_F5, Qt::NoModifier, "reloaded"}, Case{Qt::Key_R, Qt::ControlModifier, "reloaded"},
              Case{Qt::Key_L, Qt::ControlModifier, "selected"},
              Case{Qt::Key_F, Qt::ControlModifier, "selected"},
              Case{Qt::Key_Q, Qt::ControlModifier, "closed"},
              Case{Qt::Key_W, Qt::ControlModifier, "closed"}}) {
            window.show();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
            field.setText("a");
            field.setFocus();
            focused->setFocus();
            content.setStatus("");
            QTest::keyClick(focused, key, modifiers);
            EXPECT_STREQ(!window.isVisible()                               ? "closed"
                         : !statusMessage.text().isEmpty()                 ? "reloaded"
                         : field.hasFocus() && field.selectedText() == "a" ? "selected"
                                                                           : "nothing",
                         outcome)
                << key << " in " << focused->accessibleName().toStdString();
        }
}

TEST_F(MainWindowTest, typingInTheTableGoesOnWithTheQuery) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClicks(&field, "ga");
    field.home(false);
    field.selectAllOnFocus = true;
    table.setFocus();
    for (const char letter : {'m', 'm'}) {
        QTest::keyClick(QApplication::focusWidget(), letter);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(field.text(), "gamm");
    EXPECT_EQ(selectedTitle(), "gamma");
}

TEST_F(MainWindowTest, distancesHoldAtEverySize) {
    const QWidget& statusLine = *statusMessage.parentWidget();
    EXPECT_EQ(window.size(), QSize(960, 520).boundedTo(window.screen()->availableSize() - QSize(16, 48)));
    window.resize(960, 520);
    content.setStatus(std::string(100000, 'x'));
    QCoreApplication::processEvents();
    EXPECT_EQ(window.size(), QSize(960, 520)) << "a long status message does not widen the window";
    for (const QSize& size : {QSize(960, 520), QSize(480, 200)}) {
        window.resize(size == QSize(480, 200) ? QSize(10, 10) : size);
        QCoreApplication::processEvents();
        EXPECT_EQ(window.size(), size);
        EXPECT_EQ(bar.geometry(), QRect(0, 0, size.width(), 12 + 28 + 12));
        EXPECT_EQ(field.geometry().topLeft(), QPoint(16, 12));
        EXPECT_EQ(frame.geometry().topLeft(), QPoint(16, bar.height() + 12));
        EXPECT_EQ(frame.width(), size.width() - 16 - 16);
        EXPECT_EQ(table.geometry(), frame.rect().adjusted(1, 1, -1, -1));
        EXPECT_EQ(statusLine.y(), frame.geometry().bottom() + 1 + 12);
        EXPECT_EQ(statusLine.geometry().bottomRight(), QPoint(size.width() - 1 - 16, size.height() - 1 - 16));
        EXPECT_GE(table.viewport()->height(), 2 * table.rowHeight(0)) << "whole rows";
    }
}

TEST_F(MainWindowTest, queryThatKeepsNothingSaysSo) {
    const auto text = [this] {
        const auto* label = window.findChild<QLabel*>("tableText");
        return label && label->isVisible() ? label->text() : QString();
    };
    EXPECT_EQ(text(), "");
    content.setSearchText("no item has this");
    EXPECT_EQ(text(), "No items match");
    content.setSearchText("a");
    EXPECT_EQ(text(), "");
    writeItems("");
    content.reloadData();
    EXPECT_EQ(text(), "") << "there are no items";
}

TEST_F(MainWindowTest, folderButtonShowsForAnExistingPath) {
    const QRect tableBefore = table.geometry();
    const QRect fieldBefore = field.geometry();
    EXPECT_FALSE(folderButton.isVisible());
    EXPECT_EQ(fieldBefore.right(), window.width() - 1 - 16 - 28 - 8) << "no gap before the settings button";
    content.setSearchText(configuration.path("data"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(folderButton.isVisible());
    EXPECT_EQ(folderButton.size(), QSize(28, 28));
    EXPECT_EQ(table.geometry(), tableBefore);
    EXPECT_EQ(field.geometry(), fieldBefore.adjusted(0, 0, -8 - 28, 0));
    QTest::keyClicks(&field, "x");
    QCoreApplication::processEvents();
    EXPECT_FALSE(folderButton.isVisible());
    EXPECT_EQ(field.geometry(), fieldBefore);
}

TEST_F(MainWindowTest, statusLineShowsWhatTheSettingsSay) {
    const QLabel& debugSummary = *window.findChild<QLabel*>("debugSummary");
    for (const bool isDebugging : {false, true}) {
        LaunchSettings settings = state().appSettings;
        settings.showStatusMessage = !isDebugging;
        settings.showDebugSummary = isDebugging;
        content.saveSettings(settings);
        EXPECT_EQ(statusMessage.isVisible(), !isDebugging);
        EXPECT_EQ(debugSummary.isVisible(), isDebugging);
    }
    const QString logDirectory = QString::fromStdString(configuration.path("log"));
    EXPECT_TRUE(debugSummary.text().endsWith(" | Log dir: " + logDirectory));
}

TEST_F(MainWindowTest, toolTipShowsTheWholeElidedText) {
    const std::string command = std::string(1500, 'x') + "\xE2\x80\xAE" + "end";
    writeItems("long," + command + ",,\n");
    content.reloadData();
    content.setStatus(std::string(3000, 'x'));
    QWidget* tip = toolTip(*table.viewport(), cell(0, 1));
    ASSERT_TRUE(tip);
    EXPECT_EQ(tip->accessibleName(), QString(1500, 'x') + "[U+202E]end");
    EXPECT_LE(tip->width(), window.screen()->availableGeometry().width());
    const int cellSize = tip->fontMetrics().horizontalAdvance("x") * tip->fontMetrics().height();
    EXPECT_GT(tip->width() * tip->height() / cellSize, 1500) << "all of the text fits";
    QTest::keyClick(&field, Qt::Key_Shift);
    EXPECT_FALSE(tip->isVisible());
    EXPECT_FALSE(toolTip(*table.viewport(), cell(0, 0))) << "the text fits the cell";
    tip = toolTip(statusMessage, statusMessage.rect());
    ASSERT_TRUE(tip);
    EXPECT_EQ(tip->accessibleName().size(), 3000);
}

TEST_F(MainWindowTest, comesForwardFromEveryState) {
    table.setFocus();
    window.showMaximized();
    window.showMinimized();
    window.comeForward("a-token");
    EXPECT_FALSE(window.isMinimized());
    EXPECT_TRUE(window.isMaximized());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_TRUE(field.hasFocus());
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "a token is used once";

    content.reportFailure("a failure");
    window.showMinimized();
    window.comeForward("");
    EXPECT_TRUE(QTest::qWaitForWindowActive(message().window())) << "the dialog is in front";
}

} // namespace kavendra
