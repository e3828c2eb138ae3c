#include "ui/MainWindow.h"

#include "platform/desktop/QtDesktop.h"
#include "tests/support/Contrast.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/EnterAutoRepeatFilter.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTextEdit>
#include <QToolTip>

#include <numeric>

namespace kavendra {

namespace {

class MainWindowTest : public MainWindowFixture {
protected:
    QLabel& label(const char* name) { return *window.findChild<QLabel*>(name); }

    /// Lets the pointer rest in the middle of a part of a widget; returns the tooltip, nullptr without one.
    static QWidget* toolTip(QWidget& widget, const QRect& area) {
        QHelpEvent event(QEvent::ToolTip, area.center(), widget.mapToGlobal(area.center()));
        QApplication::sendEvent(&widget, &event);
        for (QWidget* each : QApplication::topLevelWidgets())
            if (each->objectName() == "toolTip" && each->isVisible())
                return each;
        return nullptr;
    }

    QDialog& dialog = *window.findChild<QDialog*>("errorDialog");
    QDialog& confirmation = *window.findChild<QDialog*>("confirmationDialog");
    QTextEdit& message = *dialog.findChild<QTextEdit*>();
    QTextEdit& question = *confirmation.findChild<QTextEdit*>();
};

/// Whether most of what is drawn between the first and the last column that differ from the corner is on the
/// right.
bool isHeavierOnTheRight(const QImage& image) {
    const QRgb ground = image.pixel(0, 0);
    std::vector<int> ink;
    for (int x = 0; x < image.width(); ++x) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            count += image.pixel(x, y) != ground ? 1 : 0;
        if (count > 0 || !ink.empty())
            ink.push_back(count);
    }
    while (!ink.empty() && ink.back() == 0)
        ink.pop_back();
    const auto middle = ink.begin() + static_cast<std::ptrdiff_t>(ink.size() / 2);
    return std::accumulate(middle, ink.end(), 0) > std::accumulate(ink.begin(), middle, 0);
}

} // namespace

TEST_F(MainWindowTest, enterActsOnTheRowsOfTheLastKeystroke) {
    // All of it is queued before any of it is handled, as when somebody types faster than a window paints.
    for (const QChar letter : QStringLiteral("gamma"))
        QCoreApplication::postEvent(&field,
                                    new QKeyEvent(QEvent::KeyPress, letter.toUpper().unicode(), {}, letter));
    QCoreApplication::postEvent(&field, new QKeyEvent(QEvent::KeyPress, Qt::Key_Return, {}, "\r"));
    QCoreApplication::processEvents();
    EXPECT_EQ(desktop.calls, std::vector<std::string>{"showDirectory /"});
}

TEST_F(MainWindowTest, theFieldKeepsTheKeyboardWhileTheMouseIsUsed) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClicks(QApplication::focusWidget(), "ga");
    const QPoint gamma = table.visualRect(table.model()->index(0, 0)).center();
    QWidget* const rows = table.viewport();
    QTest::mouseClick(table.horizontalHeader()->viewport(), Qt::LeftButton);
    QTest::mouseClick(rows, Qt::RightButton, {}, gamma);
    QTest::mousePress(rows, Qt::LeftButton, {}, gamma);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTest::mouseRelease(rows, Qt::LeftButton, {}, gamma);
    EXPECT_TRUE(desktop.calls.empty()) << "Escape gives the press up";
    QTest::mouseClick(rows, Qt::LeftButton, {}, gamma);
    QTest::keyClicks(QApplication::focusWidget(), "mm");
    EXPECT_EQ(field.text(), "gamm");
    EXPECT_EQ(desktop.calls, std::vector<std::string>{"showDirectory /"});
}

TEST_F(MainWindowTest, aFailureShowsADialogThatOneDismisses) {
    QTest::keyClicks(&field, "beta");
    QTest::keyClick(&field, Qt::Key_Return);
    ASSERT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.windowTitle(), "kavendra");
    EXPECT_EQ(message.toPlainText(), "Command not found: missing-program");
    EXPECT_EQ(dialog.accessibleDescription(), message.toPlainText());
    EXPECT_EQ(dialog.findChildren<QPushButton*>().size(), 1);
    content.reportFailure("<b>another</b>");
    EXPECT_EQ(message.toPlainText(), "<b>another</b>") << "a new failure takes the place of the old";
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialogText(), "no dialog");
    EXPECT_EQ(label("statusMessage").text(), "<b>another</b>");
    content.reportFailure("again");
    EXPECT_TRUE(dialog.isVisible());
    QTest::mouseClick(dialog.findChild<QPushButton*>(), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
}

// What X11 delivers for a held key: release and press of the same moment, not marked as repeats when the
// focus has moved to the dialog meanwhile.
TEST_F(MainWindowTest, aHeldEnterLaunchesOnceAndLeavesTheDialogUp) {
    EnterAutoRepeatFilter filter;
    qApp->installEventFilter(&filter);
    QTest::keyClicks(&field, "beta");
    const auto send = [](QWidget& widget, QEvent::Type type, quint64 milliseconds, bool isRepeat) {
        QKeyEvent event(type, Qt::Key_Return, {}, "\r", isRepeat);
        event.setTimestamp(milliseconds);
        QApplication::sendEvent(widget.windowHandle(), &event);
    };
    send(window, QEvent::KeyPress, 1000, false);
    ASSERT_TRUE(dialog.isVisible());
    send(dialog, QEvent::KeyRelease, 1500, false);
    send(dialog, QEvent::KeyPress, 1500, false);
    send(dialog, QEvent::KeyPress, 1530, true);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(status(), "Command not found: missing-program");
    send(dialog, QEvent::KeyRelease, 1600, false);
    send(dialog, QEvent::KeyPress, 1900, false);
    EXPECT_FALSE(dialog.isVisible()) << "a press of its own dismisses";
}

TEST_F(MainWindowTest, launchAtLoginIsChangedOnlyAfterYes) {
    const auto answer = [this](QDialogButtonBox::StandardButton button) {
        QTest::mouseClick(confirmation.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    };
    content.requestStartupChange();
    ASSERT_TRUE(confirmation.isVisible());
    EXPECT_EQ(confirmation.windowTitle(), "kavendra");
    EXPECT_EQ(question.toPlainText(), "Register kavendra to startup?");
    answer(QDialogButtonBox::No);
    content.requestStartupChange();
    QTest::keyClick(&confirmation, Qt::Key_Escape);
    content.requestStartupChange();
    confirmation.close();
    EXPECT_FALSE(confirmation.isVisible());
    EXPECT_FALSE(state().pendingStartupRegistrationAction);
    content.confirmStartupChange();
    EXPECT_TRUE(desktop.calls.empty());
    EXPECT_EQ(label("statusMessage").text(), "Loaded 3 items");

    content.requestStartupChange();
    answer(QDialogButtonBox::Yes);
    EXPECT_FALSE(confirmation.isVisible());
    EXPECT_EQ(label("statusMessage").text(), "Enabled launch at login");
    desktop.startupResult = std::unexpected(Error{"reason"});
    content.requestStartupChange();
    EXPECT_EQ(question.toPlainText(), "Remove kavendra from startup?");
    answer(QDialogButtonBox::Yes);
    EXPECT_FALSE(confirmation.isVisible());
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(desktop.calls, (std::vector<std::string>{"enableLaunchAtLogin", "disableLaunchAtLogin"}));
}

TEST_F(MainWindowTest, hasItsSizesAlsoWithAMessageOfAnyLength) {
    EXPECT_EQ(window.size(), QSize(960, 520));
    content.reportFailure(std::string(100000, 'x'));
    EXPECT_LT(dialog.sizeHint().width(), 800);
    EXPECT_LT(dialog.sizeHint().height(), 800);
    EXPECT_EQ(window.size(), QSize(960, 520)) << "the status line does not widen the window";
    window.resize(10, 10);
    EXPECT_EQ(window.size(), QSize(480, 200));
}

TEST_F(MainWindowTest, keepsTheDistancesAtEverySize) {
    const QWidget& bar = *field.parentWidget();
    const QWidget& frame = *table.parentWidget();
    const QWidget& statusLine = *label("statusMessage").parentWidget();
    for (const QSize& size : {QSize(960, 520), QSize(480, 200)}) {
        window.resize(size);
        QCoreApplication::processEvents();
        EXPECT_EQ(bar.geometry(), QRect(0, 0, size.width(), 12 + 28 + 12));
        EXPECT_EQ(field.geometry().topLeft(), QPoint(16, 12));
        EXPECT_EQ(frame.geometry().topLeft(), QPoint(16, bar.height() + 12));
        EXPECT_EQ(frame.width(), size.width() - 16 - 16);
        EXPECT_EQ(table.geometry(), frame.rect().adjusted(1, 1, -1, -1));
        EXPECT_EQ(statusLine.y(), frame.geometry().bottom() + 1 + 12);
        EXPECT_EQ(statusLine.geometry().bottomRight(), QPoint(size.width() - 1 - 16, size.height() - 1 - 16));
        EXPECT_GE(table.viewport()->height(), 2 * table.rowHeight(0)) << "rows that are whole";
    }
    const QImage image = window.grab().toImage();
    const QRgb outline = separatorColor(window.palette()).rgb();
    for (const QPoint& point : {QPoint(0, 20), QPoint(479, 20), QPoint(200, 0), QPoint(200, bar.height() - 1),
                                frame.geometry().topLeft(), frame.geometry().bottomRight()})
        EXPECT_EQ(image.pixel(point), outline) << point.x() << ", " << point.y();
}

TEST_F(MainWindowTest, aLongMessageIsScrolledSelectedAndCopiedWhole) {
    const QString text = "Command not found: " + QString(50000, 'x') + "\u202Ecod.\x1B\texe\nwhy";
    for (const Qt::Key closing : {Qt::Key_Escape, Qt::Key_Return}) {
        content.reportFailure(text.toStdString());
        ASSERT_TRUE(QTest::qWaitFor([this] { return dialog.isActiveWindow(); }));
        EXPECT_LT(dialog.height(), 500);
        EXPECT_TRUE(message.toPlainText().endsWith("xx[U+202E]cod.[U+001B][TAB]exe\nwhy"));
        EXPECT_GT(message.verticalScrollBar()->maximum(), 0);
        EXPECT_EQ(message.horizontalScrollBar()->maximum(), 0);
        EXPECT_TRUE(dialog.findChild<QPushButton*>()->hasFocus());
        QTest::keyClick(&dialog, Qt::Key_Tab);
        ASSERT_TRUE(message.hasFocus());
        QTest::keyClick(&message, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&message, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), text);
        QTest::keyClick(&message, closing);
        EXPECT_FALSE(dialog.isVisible());
    }
    content.reportFailure("short");
    EXPECT_EQ(message.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    EXPECT_LT(dialog.height(), 200);
}

TEST_F(MainWindowTest, aTooltipShowsAllOfALongText) {
    const std::string command = std::string(1500, 'x') + "\xE2\x80\xAE" + "end";
    writeItems("long," + command + ",,\n");
    content.reloadData();
    content.setStatus(std::string(3000, 'x'));
    const QRect cell = table.visualRect(table.model()->index(0, 1));
    QWidget* tip = toolTip(*table.viewport(), cell);
    ASSERT_TRUE(tip);
    EXPECT_EQ(tip->accessibleName(), QString(1500, 'x') + "[U+202E]end");
    EXPECT_LE(tip->width(), window.screen()->availableGeometry().width());
    EXPECT_GT(tip->width() * tip->height() /
                  (tip->fontMetrics().horizontalAdvance("x") * tip->fontMetrics().height()),
              1500)
        << "there is room for all of it";
    QTest::keyClick(&field, Qt::Key_Shift);
    EXPECT_FALSE(tip->isVisible());
    EXPECT_FALSE(toolTip(*table.viewport(), table.visualRect(table.model()->index(0, 0)))) << "it fits";
    QLabel& line = label("statusMessage");
    tip = toolTip(line, line.rect());
    ASSERT_TRUE(tip);
    EXPECT_EQ(tip->accessibleName().size(), 3000);
}

// In a right-to-left paragraph the W's would be on the left.
TEST_F(MainWindowTest, pathsRunLeftToRightInEveryLayout) {
    const std::string path = "/\xD7\x90....../WWWW"; // the first letter is Hebrew
    writeItems("x," + path + ",,\n");
    content.reloadData();
    content.select(std::nullopt);
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        content.reportFailure(path);
        QCoreApplication::processEvents();
        const QRect cell = table.visualRect(table.model()->index(0, 1)).adjusted(2, 0, -2, 0);
        EXPECT_TRUE(isHeavierOnTheRight(table.viewport()->grab(cell).toImage())) << "table";
        EXPECT_TRUE(isHeavierOnTheRight(label("statusMessage").grab().toImage())) << "status line";
        EXPECT_TRUE(isHeavierOnTheRight(message.viewport()->grab().toImage())) << "dialog";
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(MainWindowTest, settingsShowAndHideTheLines) {
    EXPECT_TRUE(label("statusMessage").isVisible());
    EXPECT_FALSE(label("debugSummary").isVisible());
    LaunchSettings changed = state().appSettings;
    changed.showStatusMessage = false;
    changed.showDebugSummary = true;
    content.saveSettings(changed);
    EXPECT_FALSE(label("statusMessage").isVisible());
    EXPECT_TRUE(label("debugSummary").isVisible());
    EXPECT_TRUE(label("debugSummary")
                    .text()
                    .endsWith(" | Log dir: " + QString::fromStdString(configuration.path("log"))));
}

TEST_F(MainWindowTest, everythingThatIsOpenFollowsTheAppearance) {
    content.reportFailure("a failure");
    content.requestStartupChange();
    QMenu menu(&window);
    menu.addAction("an entry");
    menu.popup({});
    QToolTip::showText({}, "a tip", &window);
    ASSERT_TRUE(QToolTip::isVisible());
    for (const Appearance appearance : {Appearance::dark, Appearance::light, Appearance::dark}) {
        applyAppearance(appearance);
        QCoreApplication::processEvents();
        const bool dark = appearance == Appearance::dark;
        int count = 0;
        for (const QWidget* widget : QApplication::allWidgets()) {
            if (!widget->isVisible())
                continue;
            ++count;
            const QPalette palette = widget->palette();
            EXPECT_EQ(luminance(palette.color(widget->backgroundRole())) < 0.3, dark)
                << widget->metaObject()->className();
            EXPECT_GE(
                contrast(palette.color(widget->foregroundRole()), palette.color(widget->backgroundRole())),
                smallestTextContrast)
                << widget->metaObject()->className() << " " << widget->objectName().toStdString();
        }
        EXPECT_GT(count, 15);
        const QImage image = window.grab().toImage();
        EXPECT_EQ(luminance(image.pixelColor(image.width() / 2, image.height() - 60)) < 0.5, dark) << "table";
        EXPECT_EQ(luminance(image.pixelColor(4, 4)) < 0.5, dark) << "search bar";
        EXPECT_EQ(luminance(image.pixelColor(4, image.height() - 4)) < 0.5, dark) << "status line";
    }
    applyAppearance(Appearance::system);
}

TEST_F(MainWindowTest, comesForwardHoweverItWasHidden) {
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
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog)) << "which has to be answered first";
}

} // namespace kavendra
