#include "ui/MainWindow.h"

#include "platform/desktop/QtDesktop.h"
#include "tests/support/Contrast.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMenu>
#include <QScreen>
#include <QTextEdit>
#include <QToolTip>

namespace kavendra {

namespace {

class MainWindowTest : public MainWindowFixture {
protected:
    /// Chooses an entry of the open menu, closes the menu and lets the action run.
    static void chooseFromOpenMenu(const QString& title) {
        QWidget* menu = QApplication::activePopupWidget();
        ASSERT_TRUE(menu);
        for (QAction* action : menu->findChildren<QAction*>())
            if (action->text() == title)
                action->trigger();
        menu->close();
        QCoreApplication::processEvents();
    }

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

    QTextEdit& message() { return *window.findChild<QDialog*>("errorDialog")->findChild<QTextEdit*>(); }
    SearchBar& bar = dynamic_cast<SearchBar&>(*field.parentWidget());
    MenuButton& folderButton = bar.folderButton();
    MenuButton& settingsButton = bar.settingsButton();
    QWidget& frame = *table.parentWidget();
};

/// Whether most pixels that differ from the corner are in the right half of the area that they span.
bool isHeavierOnTheRight(const QImage& image) {
    std::vector<int> positions;
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y)
            if (image.pixel(x, y) != image.pixel(0, 0))
                positions.push_back(x);
    if (positions.empty())
        return false;
    const int middle = (positions.front() + positions.back()) / 2;
    const auto right = std::ranges::count_if(positions, [middle](int x) { return x > middle; });
    return right * 2 > std::ssize(positions);
}

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
    struct Case {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* outcome;
    };
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

TEST_F(MainWindowTest, menusActAndReport) {
    content.setSearchText(configuration.path("data"));
    const auto openButtonMenu = [](QToolButton& button, const QString& choice) {
        QMetaObject::invokeMethod(&button, [choice] { chooseFromOpenMenu(choice); }, Qt::QueuedConnection);
        button.showMenu(); // returns when the menu has closed
        QCoreApplication::processEvents();
    };
    openButtonMenu(folderButton, "Copy Directory");
    EXPECT_EQ(statusMessage.text(), "Copied directory");
    const QLabel& debugSummary = *window.findChild<QLabel*>("debugSummary");
    for (const bool isShown : {true, false}) {
        EXPECT_EQ(statusMessage.isVisible(), isShown);
        EXPECT_EQ(debugSummary.isVisible(), !isShown);
        openButtonMenu(settingsButton, "Show Status Message");
        openButtonMenu(settingsButton, "Show Debug Summary");
    }
    const QString logDirectory = QString::fromStdString(configuration.path("log"));
    EXPECT_TRUE(debugSummary.text().endsWith(" | Log dir: " + logDirectory));

    content.setSearchText("");
    const QPoint position = cell(2, 1).center();
    QContextMenuEvent rightClick(QContextMenuEvent::Mouse, position, table.viewport()->mapToGlobal(position));
    QApplication::sendEvent(table.viewport(), &rightClick);
    chooseFromOpenMenu("Copy Cell Value");
    EXPECT_EQ(desktop.calls, (Calls{"copyText " + configuration.path("data"), "copyText /"}));
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

// In a right-to-left paragraph the W's would be on the left.
TEST_F(MainWindowTest, pathsRunLeftToRightInEveryLayoutDirection) {
    const std::string path = "/\xD7\x90....../WWWW"; // the first letter is Hebrew
    writeItems("x," + path + ",,\n");
    content.reloadData();
    content.select(std::nullopt);
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QApplication::setLayoutDirection(direction);
        content.reportFailure(path);
        QCoreApplication::processEvents();
        const QRect inside = cell(0, 1).adjusted(2, 0, -2, 0);
        EXPECT_TRUE(isHeavierOnTheRight(table.viewport()->grab(inside).toImage())) << "table";
        EXPECT_TRUE(isHeavierOnTheRight(statusMessage.grab().toImage())) << "status line";
        EXPECT_TRUE(isHeavierOnTheRight(message().viewport()->grab().toImage())) << "dialog";
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(MainWindowTest, openWidgetsFollowTheAppearance) {
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
        int count = 0;
        for (const QWidget* widget : QApplication::allWidgets()) {
            if (!widget->isVisible())
                continue;
            ++count;
            const QColor text = widget->palette().color(widget->foregroundRole());
            const QColor background = widget->palette().color(widget->backgroundRole());
            const std::string name =
                std::string(widget->metaObject()->className()) + " " + widget->objectName().toStdString();
            EXPECT_EQ(luminance(background) < 0.3, appearance == Appearance::dark) << name;
            EXPECT_GE(contrast(text, background), smallestTextContrast) << name;
        }
        EXPECT_GT(count, 15);
        const QImage image = window.grab().toImage();
        for (const QRect& outlined : {bar.geometry(), frame.geometry()})
            for (const QPoint& corner : {outlined.topLeft(), outlined.bottomRight()})
                EXPECT_EQ(image.pixelColor(corner), QColor(separatorColor(window.palette()).rgb()));
        const QColor barColor = searchBarColor(window.palette());
        const QPoint besideField(field.x() / 2, field.geometry().center().y());
        EXPECT_EQ(image.pixelColor(besideField), QColor(barColor.rgb()));
        for (const QColor& background : {barColor, window.palette().color(QPalette::Base)})
            EXPECT_GE(contrast(secondaryTextColor(window.palette()), background), smallestTextContrast);
        EXPECT_GE(contrast(field.palette().color(QPalette::PlaceholderText), barColor), smallestTextContrast);
    }
    applyAppearance(Appearance::system);
}

TEST_F(MainWindowTest, derivedColorsHaveEnoughContrast) {
    struct Case {
        Appearance appearance;
        bool highContrast;
        double smallestContrast;
    };
    for (const auto& [appearance, highContrast, smallest] :
         {Case{Appearance::system, false, smallestTextContrast},
          Case{Appearance::light, true, smallestHighContrast},
          Case{Appearance::dark, true, smallestHighContrast}}) {
        applyAppearance(appearance, highContrast);
        const QPalette palette = QApplication::palette();
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            const QColor text = palette.color(group, QPalette::HighlightedText);
            const QColor quiet = selectedRowColor(palette, group, false);
            const QColor deep = selectedRowColor(palette, group, true);
            EXPECT_GE(contrast(text, quiet), smallest) << group;
            EXPECT_GT(contrast(text, deep), contrast(text, quiet) * 1.1) << group;
        }
        for (const QColor& background : {searchBarColor(palette), palette.color(QPalette::Base)})
            EXPECT_GE(contrast(secondaryTextColor(palette), background), smallest);
    }
    applyAppearance(Appearance::system);
}

TEST_F(MainWindowTest, layoutFollowsTheFont) {
    const QFont before = QApplication::font();
    const int rowHeight = table.rowHeight(0);
    QFont large = before;
    large.setPointSizeF(before.pointSizeF() * 2);
    QApplication::setFont(large);
    QCoreApplication::processEvents();
    EXPECT_GT(table.rowHeight(0), rowHeight * 3 / 2);
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return statusMessage.height() >= QFontMetrics(statusMessage.font()).height(); }));
    EXPECT_GT(statusMessage.font().pointSizeF(), before.pointSizeF());
    EXPECT_GE(field.height(), QFontMetrics(large).height());
    QApplication::setFont(before);
    QCoreApplication::processEvents();
    EXPECT_EQ(table.rowHeight(0), rowHeight);
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
