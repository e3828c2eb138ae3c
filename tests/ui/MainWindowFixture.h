#pragma once

#include "tests/app/ContentViewFixture.h"
#include "ui/MainWindow.h"

#include <QTest>
#include <QTextEdit>

namespace kavendra {

/// A content view with its window on the screen.
class MainWindowFixture : public ContentViewFixture {
protected:
    MainWindowFixture() {
        start();
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    QRect cell(int row, int column) const { return table.visualRect(table.model()->index(row, column)); }

    QTextEdit& message() { return *window.findChild<QDialog*>("errorDialog")->findChild<QTextEdit*>(); }

    using Calls = std::vector<std::string>;

    WindowMenus menus{content, desktop, processes, executor};
    MainWindow window{content, menus};
    SearchField& field = *window.findChild<SearchField*>();
    ItemTable& table = *window.findChild<ItemTable*>();
    SearchBar& bar = dynamic_cast<SearchBar&>(*field.parentWidget());
    QWidget& frame = *table.parentWidget();
    QLabel& statusMessage = *window.findChild<QLabel*>("statusMessage");
};

} // namespace kavendra
