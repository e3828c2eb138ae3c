#include "tests/ui/MainWindowFixture.h"
#include "ui/EnterAutoRepeatFilter.h"

#include <QApplication>
#include <QClipboard>
#include <QPushButton>
#include <QScrollBar>
#include <QTextEdit>

namespace kavendra {

namespace {

class MessageDialogTest : public MainWindowFixture {
protected:
    static void click(const QDialog& dialog, QDialogButtonBox::StandardButton button) {
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }

    /// Returns a dialog, which the window makes on first use.
    QDialog& madeDialog(const char* name) {
        content.reportFailure({});
        content.dismissErrorDialog();
        content.requestStartupChange();
        content.cancelStartupChange();
        return *window.findChild<QDialog*>(name);
    }

    QDialog& error = madeDialog("errorDialog");
    QDialog& confirmation = madeDialog("confirmationDialog");
    QTextEdit& message = *error.findChild<QTextEdit*>();
    QTextEdit& question = *confirmation.findChild<QTextEdit*>();
};

} // namespace

TEST_F(MessageDialogTest, failureIsShownUntilItIsDismissed) {
    QTest::keyClicks(&field, "beta");
    QTest::keyClick(&field, Qt::Key_Return);
    ASSERT_TRUE(error.isVisible());
    EXPECT_EQ(error.windowTitle(), "kavendra");
    EXPECT_EQ(message.toPlainText(), "Command not found: missing-program");
    EXPECT_EQ(error.accessibleDescription(), message.toPlainText());
    EXPECT_EQ(error.findChildren<QPushButton*>().size(), 1);
    content.reportFailure("<b>another</b>");
    EXPECT_EQ(message.toPlainText(), "<b>another</b>") << "a new failure replaces the old one";
    click(error, QDialogButtonBox::Ok);
    EXPECT_FALSE(error.isVisible());
    EXPECT_EQ(dialogText(), "no dialog");
    EXPECT_EQ(statusMessage.text(), "<b>another</b>");
}

TEST_F(MessageDialogTest, heldEnterLaunchesOnceAndDoesNotDismiss) {
    EnterAutoRepeatFilter filter;
    qApp->installEventFilter(&filter);
    QTest::keyClicks(&field, "beta");
    const auto send = [](QWidget& widget, QEvent::Type type, quint64 milliseconds, bool isRepeat = false) {
        QKeyEvent event(type, Qt::Key_Return, {}, "\r", isRepeat);
        event.setTimestamp(milliseconds);
        QApplication::sendEvent(widget.windowHandle(), &event);
    };
    send(window, QEvent::KeyPress, 1000);
    ASSERT_TRUE(error.isVisible());
    // X11: a repeat after a change of the focus is not marked as one.
    send(error, QEvent::KeyRelease, 1500);
    send(error, QEvent::KeyPress, 1500);
    send(error, QEvent::KeyPress, 1530, true);
    EXPECT_TRUE(error.isVisible());
    send(error, QEvent::KeyRelease, 1600);
    send(error, QEvent::KeyPress, 1900);
    EXPECT_FALSE(error.isVisible()) << "a new press dismisses";
}

TEST_F(MessageDialogTest, launchAtLoginChangesOnlyAfterYes) {
    using Case = std::pair<const char*, std::function<void()>>;
    for (const auto& [name, answer] :
         {Case{"No", [this] { click(confirmation, QDialogButtonBox::No); }},
          Case{"Escape", [this] { QTest::keyClick(&confirmation, Qt::Key_Escape); }},
          Case{"close button", [this] { confirmation.close(); }},
          Case{"change of the state", [this] { content.cancelStartupChange(); }}}) {
        SCOPED_TRACE(name);
        content.requestStartupChange();
        ASSERT_TRUE(confirmation.isVisible());
        EXPECT_EQ(question.toPlainText(), "Register kavendra to startup?");
        answer();
        EXPECT_FALSE(confirmation.isVisible());
        EXPECT_FALSE(state().pendingStartupRegistrationAction);
        EXPECT_TRUE(desktop.calls.empty());
    }
    content.requestStartupChange();
    click(confirmation, QDialogButtonBox::Yes);
    EXPECT_EQ(statusMessage.text(), "Enabled launch at login");
    desktop.startupResult = std::unexpected(Error{"reason"});
    content.requestStartupChange();
    EXPECT_EQ(question.toPlainText(), "Remove kavendra from startup?");
    click(confirmation, QDialogButtonBox::Yes);
    EXPECT_FALSE(confirmation.isVisible());
    EXPECT_TRUE(error.isVisible());
    EXPECT_EQ(desktop.calls, (Calls{"enableLaunchAtLogin", "disableLaunchAtLogin"}));
}

TEST_F(MessageDialogTest, longMessageScrollsAndIsCopiedWhole) {
    const QString text = "Command not found: " + QString(50000, 'x') + "\u202Ecod.\x1B\texe\nwhy";
    const QSize screen = window.screen()->availableSize();
    for (const Qt::Key dismissal : {Qt::Key_Escape, Qt::Key_Return}) {
        content.reportFailure(text.toStdString());
        ASSERT_TRUE(QTest::qWaitFor([this] { return error.isActiveWindow(); }));
        EXPECT_LT(error.height(), screen.height() * 2 / 3);
        EXPECT_LT(error.width(), screen.width());
        EXPECT_TRUE(message.toPlainText().endsWith("xx[U+202E]cod.[U+001B][TAB]exe\nwhy"));
        EXPECT_GT(message.verticalScrollBar()->maximum(), 0);
        EXPECT_EQ(message.horizontalScrollBar()->maximum(), 0);
        EXPECT_TRUE(error.findChild<QPushButton*>()->hasFocus());
        QTest::keyClick(&error, Qt::Key_Tab);
        ASSERT_TRUE(message.hasFocus());
        QTest::keyClick(&message, Qt::Key_A, Qt::ControlModifier);
        content.setStatus("a change of the state keeps the selection");
        QTest::keyClick(&message, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), text);
        QTest::keyClick(&message, dismissal);
        EXPECT_FALSE(error.isVisible());
    }
    content.reportFailure("short");
    EXPECT_EQ(message.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    EXPECT_LT(message.height(), 2 * message.fontMetrics().height());
}

} // namespace kavendra
