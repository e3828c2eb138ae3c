#include "ui/Translation.h"

#include "tests/app/ContentViewFixture.h"
#include "ui/MainWindow.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace kavendra {

namespace {

using TranslationTest = ContentViewFixture;

/// Expects a translation for each title of a menu and its submenus.
void expectTranslated(const Menu& menu) {
    for (const MenuEntry& entry : menu) {
        if (!entry.isSeparator()) {
            EXPECT_NE(translated(entry.title.c_str()).toStdString(), entry.title);
        }
        if (entry.title != "Appearance") // its entries are shown as in the settings file
            expectTranslated(entry.submenu);
    }
}

} // namespace

TEST_F(TranslationTest, menusAndWindowAreShownInJapanese) {
    QLocale::setDefault(QLocale("ja_JP"));
    installTranslations();
    QLocale::setDefault(QLocale::c());
    WindowMenus menus(content, desktop, processes, executor);
    start();
    content.setSearchText("/");
    expectTranslated(menus.settingsMenu([] {}));
    expectTranslated(menus.typedPathMenu());
    expectTranslated(menus.itemMenu(content.filteredItems().items[0], std::nullopt));

    MainWindow window(content, menus);
    EXPECT_EQ(window.findChild<SearchField*>()->placeholderText(), "Title、Command、Params、Keywords を検索");
    qDeleteAll(QCoreApplication::instance()->findChildren<QTranslator*>()); // other tests expect English
}

} // namespace kavendra
