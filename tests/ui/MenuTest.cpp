#include "tests/ui/ContentViewFixture.h"
#include "ui/MainWindow.h"
#include "ui/MenuBuilder.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

namespace kavendra {

namespace {

/// Returns the titles of an open menu, disabled ones in parentheses, "-" for a separator.
std::string textOf(const QMenu& menu) {
    QStringList titles;
    for (const QAction* action : menu.actions())
        titles << (action->isSeparator() ? "-"
                   : action->isEnabled() ? action->text()
                                         : "(" + action->text() + ")");
    return titles.join(", ").toStdString();
}

QMenu* openMenu() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

/// Chooses an entry of the open menu, or of a submenu of it, as a click does, and lets the action run.
void chooseFromOpenMenu(const QString& title) {
    for (const QAction* action : openMenu()->actions())
        for (QAction* entry : action->menu() ? action->menu()->actions() : QList<QAction*>())
            if (entry->text() == title)
                entry->trigger();
    openMenu()->close();
    QCoreApplication::processEvents();
}

class MenuTest : public ContentViewFixture {
protected:
    MenuTest() {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    ~MenuTest() override {
        while (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
    }

    void rightClick(const QPoint& position) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, table.viewport()->mapToGlobal(position));
        QApplication::sendEvent(table.viewport(), &event);
        QCoreApplication::processEvents();
    }
    QPoint pointIn(int row, int column) {
        return table.visualRect(table.model()->index(row, column)).center();
    }

    WindowMenus menus{content, desktop, processes};
    MainWindow window{content, menus};
    ItemTable& table = *window.findChild<ItemTable*>();
    SearchField& field = *window.findChild<SearchField*>();
    MenuButton& folderButton = *window.findChild<MenuButton*>();
};

} // namespace

TEST_F(MenuTest, aRightClickSelectsTheRowAndKnowsTheColumn) {
    rightClick(pointIn(2, 1));
    EXPECT_EQ(selectedTitle(), "gamma");
    ASSERT_TRUE(openMenu());
    EXPECT_EQ(textOf(*openMenu()), "Open Parent Directory, Copy to Clipboard, Open in Excel, -, "
                                   "Open Data File (items.csv), -, Reload Data Files, Open Data Directory");
    chooseFromOpenMenu("Copy Cell Value");
    EXPECT_EQ(desktop.calls, std::vector<std::string>{"copyText /"});

    rightClick(pointIn(1, 0));
    EXPECT_EQ(selectedTitle(), "beta");
    EXPECT_TRUE(textOf(*openMenu()).starts_with("(Open Parent Directory), "));
    EXPECT_TRUE(desktop.calls.size() == 1) << "a right click launches nothing";
}

TEST_F(MenuTest, whereThereIsNoRowThereIsTheGeneralMenu) {
    rightClick(pointIn(2, 1) + QPoint(0, 3 * table.rowHeight(2)));
    ASSERT_TRUE(openMenu());
    EXPECT_EQ(textOf(*openMenu()), "Reload Data Files, Open Data Directory");
    EXPECT_EQ(selectedTitle(), "alpha") << "the selection stays";
}

TEST_F(MenuTest, behindTheLastColumnThereIsNoCellToCopy) {
    window.resize(1400, 520);
    rightClick(QPoint(table.viewport()->width() - 2, pointIn(1, 0).y()));
    EXPECT_EQ(selectedTitle(), "beta");
    EXPECT_EQ(textOf(*openMenu()->actions()[1]->menu()),
              "Copy Command to Execute, (Copy Cell Value), Copy Row");
}

TEST_F(MenuTest, theKeyboardOpensTheMenuOfTheSelectedRowInItsPlace) {
    content.select(lastSelection(content.filteredItems()));
    table.setFocus();
    const QPoint belowRow = table.viewport()->mapToGlobal(QPoint(0, pointIn(2, 0).y()));
    QTest::keyClick(&table, Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(openMenu());
    EXPECT_EQ(textOf(*openMenu()->actions()[1]->menu()),
              "Copy Command to Execute, (Copy Cell Value), Copy Row");
    EXPECT_NEAR(openMenu()->y(), belowRow.y(), table.rowHeight(2));
    EXPECT_EQ(openMenu()->x(), belowRow.x());
    openMenu()->close();

    content.select(std::nullopt);
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(5, 5), table.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&table, &menuKey);
    ASSERT_TRUE(openMenu());
    EXPECT_EQ(textOf(*openMenu()), "Reload Data Files, Open Data Directory");
}

TEST_F(MenuTest, theFolderButtonComesAndGoesAndMovesNothing) {
    EXPECT_FALSE(folderButton.isVisible());
    const QRect tableBefore = table.geometry();
    const QRect fieldBefore = field.geometry();
    content.setSearchText(configuration.path("data"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(folderButton.isVisible());
    EXPECT_EQ(folderButton.size(), QSize(28, 28));
    EXPECT_EQ(table.geometry(), tableBefore);
    EXPECT_EQ(field.geometry(), fieldBefore);
    EXPECT_FALSE(folderButton.accessibleName().isEmpty());
    QTest::keyClicks(&field, "x");
    EXPECT_FALSE(folderButton.isVisible());
}

TEST_F(MenuTest, theFolderButtonsMenuIsThatOfTheText) {
    content.setSearchText(configuration.path("data"));
    for (int opened = 0; opened < 2; ++opened) {
        QMetaObject::invokeMethod(
            &folderButton, [] { chooseFromOpenMenu("Copy Directory"); }, Qt::QueuedConnection);
        folderButton.showMenu();
        QCoreApplication::processEvents();
        EXPECT_EQ(textOf(*folderButton.menu()), "Open, Open Excel, Copy to Clipboard");
        EXPECT_EQ(desktop.calls.size(), static_cast<std::size_t>(opened) + 1);
    }
    EXPECT_EQ(desktop.calls[0], "copyText " + configuration.path("data"));
    EXPECT_EQ(folderButton.menu()->findChildren<QMenu*>().size(), 3) << "nothing is left of the first time";
}

TEST(MenuBuilder, drawsWhatTheEntriesSay) {
    QMenu menu;
    QWidget owner;
    fillMenu(menu,
             {{.title = "Open (%1)", .titleArgument = "R&D\t%1\n.csv"},
              menuSeparator(),
              {.title = "On", .isEnabled = false, .isChecked = true},
              {.title = "Off", .isChecked = false},
              {.title = "%1", .titleArgument = std::string(5000, 'x')}},
             owner);
    const QList<QAction*> actions = menu.actions();
    EXPECT_EQ(actions[0]->text(), "Open (R&&D %1 .csv)") << "an ampersand marks no key, a tab no shortcut";
    EXPECT_TRUE(actions[1]->isSeparator());
    EXPECT_FALSE(actions[0]->isCheckable());
    EXPECT_TRUE(actions[2]->isChecked());
    EXPECT_FALSE(actions[2]->isEnabled());
    EXPECT_TRUE(actions[3]->isCheckable() && !actions[3]->isChecked());
    EXPECT_LT(menu.sizeHint().width(), 600);
}

TEST(MenuBuilder, anActionRunsAfterTheMenuAndNotWithoutItsOwner) {
    int runs = 0;
    auto owner = std::make_unique<QWidget>();
    const Menu entries{{.title = "Act", .action = [&runs] { ++runs; }}};
    auto menu = std::make_unique<QMenu>();
    fillMenu(*menu, entries, *owner);
    menu->actions()[0]->trigger();
    EXPECT_EQ(runs, 0);
    menu.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(runs, 1);

    menu = std::make_unique<QMenu>();
    fillMenu(*menu, entries, *owner);
    menu->actions()[0]->trigger();
    owner.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(runs, 1);
}

} // namespace kavendra
