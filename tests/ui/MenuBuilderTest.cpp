#include "ui/MenuBuilder.h"

#include <QApplication>
#include <QMenu>
#include <QScreen>

#include <gtest/gtest.h>

namespace kavendra {

TEST(MenuBuilder, entriesBecomeActionsSeparatorsAndSubmenus) {
    QMenu menu;
    QWidget owner;
    const Menu entries{{.title = "Open (%1)", .titleArgument = "R&D\t%1\n.csv"},
                       menuSeparator(),
                       {.title = "On", .isEnabled = false, .isChecked = true},
                       {.title = "Off", .isChecked = false, .shortcut = "Ctrl+R"},
                       {.title = "More %1", .titleArgument = "", .submenu = {{.title = "Inner"}}},
                       {.title = "%1", .titleArgument = std::string(80, 'x')},
                       {.title = "%1", .titleArgument = std::string(5000, 'x')}};
    for (int fill = 0; fill < 2; ++fill)
        fillMenu(menu, entries, owner);
    const QList<QAction*> actions = menu.actions();
    ASSERT_EQ(actions.size(), 7) << "filling replaces";
    EXPECT_EQ(actions[0]->text(), "Open (R&&D[TAB]%1[LF].csv)") << "no mnemonic, no shortcut";
    EXPECT_TRUE(actions[0]->isEnabled() && !actions[0]->isCheckable());
    EXPECT_TRUE(actions[1]->isSeparator());
    EXPECT_TRUE(actions[2]->isChecked() && !actions[2]->isEnabled());
    EXPECT_TRUE(actions[3]->isCheckable() && !actions[3]->isChecked());
    EXPECT_EQ(actions[3]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_R));
    EXPECT_EQ(actions[4]->text(), "More ");
    EXPECT_EQ(actions[4]->menu()->actions()[0]->text(), "Inner");
    EXPECT_EQ(menu.findChildren<QMenu*>().size(), 1) << "the first filling's submenu is deleted";
    EXPECT_EQ(actions[5]->text().size(), 80) << "whole";
    EXPECT_LE(menu.sizeHint().width(), owner.screen()->availableGeometry().width());

    menu.setLayoutDirection(Qt::RightToLeft);
    fillMenu(menu, {{.title = "Open (%1)", .titleArgument = "~/a"}}, owner);
    EXPECT_EQ(menu.actions()[0]->text(), "\u2068Open (\u2066~/a\u2069)\u2069") << "direction is kept";
}

TEST(MenuBuilder, actionRunsAfterTheMenuUnlessTheOwnerIsDestroyed) {
    for (const bool isOwnerDestroyed : {false, true}) {
        int runs = 0;
        auto owner = std::make_unique<QWidget>();
        auto menu = std::make_unique<QMenu>();
        fillMenu(*menu, {{.title = "Act", .action = [&runs] { ++runs; }}}, *owner);
        menu->actions()[0]->trigger();
        EXPECT_EQ(runs, 0);
        menu.reset();
        if (isOwnerDestroyed)
            owner.reset();
        QCoreApplication::processEvents();
        EXPECT_EQ(runs, isOwnerDestroyed ? 0 : 1);
    }
}

} // namespace kavendra
