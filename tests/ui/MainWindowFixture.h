#pragma once

#include "tests/app/ContentViewFixture.h"
#include "ui/MainWindow.h"

#include <QTest>

namespace kavendra {

/// A content view with its window, which is on the screen.
class MainWindowFixture : public ContentViewFixture {
protected:
    MainWindowFixture() {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    WindowMenus menus{content, desktop, processes};
    MainWindow window{content, menus};
    SearchField& field = *window.findChild<SearchField*>();
    ItemTable& table = *window.findChild<ItemTable*>();
};

} // namespace kavendra
