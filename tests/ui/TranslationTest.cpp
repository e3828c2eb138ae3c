#include "ui/Translation.h"

#include "tests/app/ContentViewFixture.h"
#include "ui/MainWindow.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace kavendra {

namespace {

using TranslationTest = ContentViewFixture;

/// All titles of a menu and its submenus that are for a person to read in their language.
void collect(const Menu& menu, std::vector<std::string>& titles) {
    for (const MenuEntry& entry : menu) {
        if (!entry.isSeparator())
            titles.push_back(entry.title);
        if (entry.title != "Appearance") // its entries are written as in the settings file
            collect(entry.submenu, titles);
    }
}

} // namespace

TEST_F(TranslationTest, japaneseIsComplete) {
    QLocale::setDefault(QLocale("ja_JP"));
    installTranslations();
    QLocale::setDefault(QLocale::c());
    WindowMenus menus(content, desktop, processes);
    content.appear();
    content.setSearchText("/");
    std::vector<std::string> texts{"Register kavendra to startup?",
                                   "Remove kavendra from startup?",
                                   "Choose Data Directory",
                                   "Select the folder that contains launch data files.",
                                   "Choose",
                                   "%1 items",
                                   "Search",
                                   "Launch items",
                                   "Settings",
                                   "Search path",
                                   "Status",
                                   "Open or copy this path",
                                   "Message",
                                   "Yes",
                                   "No"};
    collect(menus.settingsMenu([] {}), texts);
    collect(menus.typedPathMenu(), texts);
    collect(menus.itemMenu(content.filteredItems().items[0], std::nullopt), texts);
    EXPECT_GT(texts.size(), 35U);
    for (const std::string& text : texts)
        EXPECT_NE(translated(text.c_str()).toStdString(), text);

    MainWindow window(content, menus);
    EXPECT_EQ(window.findChild<SearchField*>()->placeholderText(), "Title、Command、Params、Keywords を検索");
    qDeleteAll(QCoreApplication::instance()->findChildren<QTranslator*>()); // other tests read English
}

} // namespace kavendra
