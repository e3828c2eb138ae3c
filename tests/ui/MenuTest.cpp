#include "tests/support/MenuText.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/MenuBuilder.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>

#include <gmock/gmock.h>

namespace kavendra {

namespace {

using testing::HasSubstr;

/// Returns what a menu on the screen offers; to act on an entry is to click it.
Menu entriesOf(const QMenu& menu) {
    Menu entries;
    for (QAction* action : menu.actions())
        entries.push_back({.title = action->text().toStdString(),
                           .isEnabled = action->isEnabled(),
                           .submenu = action->menu() ? entriesOf(*action->menu()) : Menu(),
                           .action = [action] { action->trigger(); }});
    return entries;
}

class MenuTest : public MainWindowFixture {
protected:
    ~MenuTest() override {
        while (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
    }

    void rightClick(const QPoint& position) {
        sendMenuEvent(*table.viewport(), QContextMenuEvent::Mouse, position);
    }
    static void sendMenuEvent(QWidget& widget, QContextMenuEvent::Reason reason, const QPoint& position) {
        QContextMenuEvent event(reason, position, widget.mapToGlobal(position));
        QApplication::sendEvent(&widget, &event);
        QCoreApplication::processEvents();
    }
    QPoint pointIn(int row, int column) {
        return table.visualRect(table.model()->index(row, column)).center();
    }

    static QMenu& openMenu() {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            throw std::runtime_error("no menu is open");
        return *menu;
    }
    static std::string openMenuText() { return menuText(entriesOf(openMenu())); }
    static void closeMenu() {
        openMenu().close();
        QCoreApplication::processEvents();
    }
    /// Chooses an entry of the open menu as a click does, and lets the action run.
    static void chooseFromOpenMenu(const std::string& title) {
        choose(entriesOf(openMenu()), title);
        closeMenu();
    }

    static constexpr const char* generalMenu = "Reload Data Files, Open Data Directory";
    MenuButton& folderButton = *window.findChild<MenuButton*>();
};

} // namespace

TEST_F(MenuTest, aRightClickSelectsTheRowAndKnowsTheColumn) {
    rightClick(pointIn(1, 0));
    EXPECT_EQ(selectedTitle(), "beta");
    EXPECT_EQ(openMenuText(), "(Open Parent Directory), "
                              "Copy to Clipboard [Copy Command to Execute, Copy Cell Value, Copy Row], "
                              "Open in Excel [(Read-Only), (New Session), (New Session + Read-Only)], -, "
                              "Open Data File (items.csv), -, " +
                                  std::string(generalMenu));
    closeMenu();
    rightClick(pointIn(2, 1));
    EXPECT_EQ(selectedTitle(), "gamma");
    chooseFromOpenMenu("Copy Cell Value");
    EXPECT_EQ(desktop.calls, std::vector<std::string>{"copyText /"}) << "a right click launches nothing";
}

TEST_F(MenuTest, behindTheLastColumnThereIsNoCellAndBelowTheRowsTheGeneralMenu) {
    window.resize(1400, 520);
    rightClick(QPoint(table.viewport()->width() - 2, pointIn(1, 0).y()));
    EXPECT_EQ(selectedTitle(), "beta");
    EXPECT_THAT(openMenuText(), HasSubstr("[Copy Command to Execute, (Copy Cell Value), Copy Row]"));
    closeMenu();
    rightClick(pointIn(2, 1) + QPoint(0, 3 * table.rowHeight(2)));
    EXPECT_EQ(openMenuText(), generalMenu);
    EXPECT_EQ(selectedTitle(), "beta") << "the selection stays";
}

TEST_F(MenuTest, theKeyboardOpensTheMenuOfTheSelectedRowInItsPlace) {
    content.select(lastSelection(content.filteredItems()));
    table.setFocus();
    const QPoint belowRow = table.viewport()->mapToGlobal(QPoint(0, pointIn(2, 0).y()));
    QTest::keyClick(&table, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_THAT(openMenuText(), HasSubstr("[Copy Command to Execute, (Copy Cell Value), Copy Row]"));
    EXPECT_NEAR(openMenu().y(), belowRow.y(), table.rowHeight(2));
    EXPECT_EQ(openMenu().x(), belowRow.x());
    closeMenu();

    content.select(std::nullopt);
    sendMenuEvent(table, QContextMenuEvent::Keyboard, QPoint(5, 5));
    EXPECT_EQ(openMenuText(), generalMenu);
}

TEST_F(MenuTest, theFolderButtonTakesItsRoomFromTheEndOfTheField) {
    EXPECT_FALSE(folderButton.isVisible());
    const QRect tableBefore = table.geometry();
    const QRect fieldBefore = field.geometry();
    EXPECT_EQ(fieldBefore.right(), window.width() - 1 - 16 - 28 - 8) << "no gap before the gear";
    content.setSearchText(configuration.path("data"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(folderButton.isVisible());
    EXPECT_EQ(folderButton.size(), QSize(28, 28));
    EXPECT_EQ(table.geometry(), tableBefore);
    EXPECT_EQ(field.geometry(), fieldBefore.adjusted(0, 0, -8 - 28, 0));
    for (int opened = 0; opened < 2; ++opened) {
        QMetaObject::invokeMethod(
            &folderButton, [] { chooseFromOpenMenu("Copy Directory"); }, Qt::QueuedConnection);
        folderButton.showMenu();
        QCoreApplication::processEvents();
    }
    const std::string copied = "copyText " + configuration.path("data");
    EXPECT_EQ(desktop.calls, (std::vector{copied, copied}));
    EXPECT_EQ(status(), "Copied directory");
    EXPECT_EQ(folderButton.menu()->findChildren<QMenu*>().size(), 3) << "nothing is left of the first time";
    QTest::keyClicks(&field, "x");
    EXPECT_FALSE(folderButton.isVisible());
    QCoreApplication::processEvents();
    EXPECT_EQ(field.geometry(), fieldBefore);
}

TEST(MenuBuilder, drawsWhatTheEntriesSay) {
    QMenu menu;
    QWidget owner;
    fillMenu(menu,
             {{.title = "Open (%1)", .titleArgument = "R&D\t%1\n.csv"},
              menuSeparator(),
              {.title = "On", .isEnabled = false, .isChecked = true},
              {.title = "Off", .isChecked = false},
              {.title = "Open with %1", .titleArgument = ""},
              {.title = "%1", .titleArgument = std::string(80, 'x')},
              {.title = "%1", .titleArgument = std::string(5000, 'x')}},
             owner);
    const QList<QAction*> actions = menu.actions();
    EXPECT_EQ(actions[0]->text(), "Open (R&&D[TAB]%1[LF].csv)")
        << "an ampersand marks no key, a tab no shortcut";
    EXPECT_TRUE(actions[1]->isSeparator());
    EXPECT_FALSE(actions[0]->isCheckable());
    EXPECT_TRUE(actions[2]->isChecked());
    EXPECT_FALSE(actions[2]->isEnabled());
    EXPECT_TRUE(actions[3]->isCheckable() && !actions[3]->isChecked());
    EXPECT_EQ(actions[4]->text(), "Open with ");
    EXPECT_EQ(actions[5]->text().size(), 80) << "whole";
    EXPECT_LE(menu.sizeHint().width(), owner.screen()->availableGeometry().width());
}

TEST(MenuBuilder, aRightToLeftMenuKeepsTheDirectionOfItsTitles) {
    QMenu menu;
    menu.setLayoutDirection(Qt::RightToLeft);
    QWidget owner;
    fillMenu(menu, {{.title = "Open (%1)", .titleArgument = "~/a"}}, owner);
    EXPECT_EQ(menu.actions()[0]->text(), "\u2068Open (\u2066~/a\u2069)\u2069");
}

TEST(MenuBuilder, anActionRunsAfterTheMenuAndNotWithoutItsOwner) {
    for (const bool ownerStays : {true, false}) {
        int runs = 0;
        auto owner = std::make_unique<QWidget>();
        auto menu = std::make_unique<QMenu>();
        fillMenu(*menu, {{.title = "Act", .action = [&runs] { ++runs; }}}, *owner);
        menu->actions()[0]->trigger();
        EXPECT_EQ(runs, 0);
        menu.reset();
        if (!ownerStays)
            owner.reset();
        QCoreApplication::processEvents();
        EXPECT_EQ(runs, ownerStays ? 1 : 0);
    }
}

} // namespace kavendra
