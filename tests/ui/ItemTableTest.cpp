#include "ui/ItemTable.h"

#include "tests/app/ContentViewFixture.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTest>

namespace kavendra {

namespace {

using Titles = std::vector<std::string>;

/// The table of the fixture's three items. Its menus have one entry, which names the row and the column.
class ItemTableTest : public ContentViewFixture {
protected:
    ItemTableTest() {
        table.onActivate = [this](const LaunchItem& item) { activated.push_back(item.title); };
        table.onSelect = [this](const std::optional<UUID>& id) {
            content.select(id);
            selections.push_back(selectedTitle());
        };
        table.onColumnWidthChange = [this](const std::string& column, double width) {
            widths.emplace_back(column, width);
        };
        table.itemMenuProvider = [](const LaunchItem& item, std::optional<ItemColumn> column) {
            const std::string_view name = column ? properties(*column).identifier : "no column";
            return Menu{{.title = item.title + ", " + std::string(name)}};
        };
        table.generalMenuProvider = [] { return Menu{{.title = "general"}}; };
        start();
        table.resize(1300, 300);
        table.show();
        table.showState(state());
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&table));
    }

    QRect cell(int row, int column = 0) { return table.visualRect(table.model()->index(row, column)); }
    bool isInView(int row) { return table.viewport()->rect().contains(cell(row).center()); }
    QPoint rightOfColumns(int row) { return {table.viewport()->width() - 2, cell(row).center().y()}; }
    QPoint belowRows() { return cell(2).center() + QPoint(0, 3 * cell(2).height()); }

    static void openMenu(QWidget& widget, QContextMenuEvent::Reason reason, const QPoint& position) {
        QContextMenuEvent event(reason, position, widget.mapToGlobal(position));
        QApplication::sendEvent(&widget, &event);
    }

    void handleEvents() {
        QCoreApplication::processEvents();
        table.showState(state());
    }

    ItemTable table;
    Titles activated;
    Titles selections;
    std::vector<std::pair<std::string, double>> widths;
};

} // namespace

TEST_F(ItemTableTest, cellsShowTheFilteredItemsOnOneLine) {
    writeItems("other,,,\n\"two\nlines\"," + std::string(100000, 'x') +
               ",a\xE2\x80\xA8"
               "b,word\n");
    content.reloadData();
    content.setSearchText("lines");
    table.showState(state());
    const auto* model = table.model();
    ASSERT_EQ(model->rowCount(), 1);
    QStringList columns;
    for (int column = 0; column < model->columnCount(); ++column)
        columns << model->headerData(column, Qt::Horizontal).toString() + ": " +
                       model->index(0, column).data().toString().left(15);
    EXPECT_EQ(columns.join("; "), "Title: two[LF]lines; Command / Path: xxxxxxxxxxxxxxx; Params: a[U+2028]b; "
                                  "Keywords: word; Source: items.csv");
    EXPECT_LT(model->index(0, 1).data().toString().size(), 5000);
}

TEST_F(ItemTableTest, completedClickSelectsAndLaunches) {
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, cell(1).center());
    handleEvents();
    EXPECT_EQ(activated, Titles{"beta"});
    EXPECT_EQ(selections, Titles{"beta"});
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, rightOfColumns(1));
    EXPECT_EQ(activated.size(), 2U);
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, cell(1).center());
    QTest::mouseRelease(table.viewport(), Qt::LeftButton, {}, cell(1).center());
    EXPECT_EQ(activated.size(), 3U) << "a double click's second press counts";
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, belowRows());
    handleEvents();
    EXPECT_EQ(activated.size(), 3U);
    EXPECT_EQ(selections.back(), "nothing") << "a click below the rows deselects";
}

TEST_F(ItemTableTest, pressLaunchesOnlyIfItStaysOnItsRow) {
    QWidget* rows = table.viewport();
    const QPoint beta = cell(1).center(), gamma = cell(2).center();
    using Case = std::tuple<const char*, std::function<void()>, QPoint, Titles>;
    for (const auto& [name, duringPress, release, expected] :
         {Case{"released elsewhere", [] {}, gamma, {}},
          Case{"away and back",
               [&] { QTest::mouseMove(rows, gamma), QTest::mouseMove(rows, beta); },
               beta,
               {}},
          Case{"Escape", [this] { QTest::keyClick(&table, Qt::Key_Escape); }, beta, {}},
          Case{"right click", [&] { openMenu(*rows, QContextMenuEvent::Mouse, beta); }, beta, {"beta"}},
          Case{"new rows under the pointer",
               [this] { content.setSearchText("a"), handleEvents(); },
               beta,
               {}}}) {
        QTest::mousePress(rows, Qt::LeftButton, {}, beta);
        duringPress();
        EXPECT_FALSE(QApplication::activePopupWidget()) << name;
        QTest::mouseRelease(rows, Qt::LeftButton, {}, release);
        EXPECT_EQ(std::exchange(activated, {}), expected) << name;
        QCoreApplication::processEvents();
    }
    QTest::mouseClick(rows, Qt::RightButton, {}, beta);
    EXPECT_TRUE(activated.empty());
}

TEST_F(ItemTableTest, keysMoveAndLaunch) {
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_Down, Qt::ControlModifier);
    handleEvents();
    QTest::keyClick(&table, Qt::Key_Up);
    handleEvents();
    QTest::keyClick(&table, Qt::Key_Return);
    QTest::keyClick(&table, Qt::Key_Up, Qt::ControlModifier);
    handleEvents();
    QTest::keyClick(&table, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(selections, (Titles{"gamma", "beta", "alpha"}));
    EXPECT_EQ(activated, (Titles{"beta", "alpha"}));
}

TEST_F(ItemTableTest, menuIsForTheRowAndColumnOnWhichItIsOpened) {
    using Case = std::tuple<const char*, std::function<void()>, QString, std::string>;
    using enum QContextMenuEvent::Reason;
    table.setFocus();
    for (const auto& [name, open, menu, selected] :
         {Case{"cell", [this] { openMenu(*table.viewport(), Mouse, cell(1, 1).center()); }, "beta, Command",
               "beta"},
          Case{"right of the columns", [this] { openMenu(*table.viewport(), Mouse, rightOfColumns(2)); },
               "gamma, no column", "gamma"},
          Case{"below the rows", [this] { openMenu(*table.viewport(), Mouse, belowRows()); }, "general",
               "gamma"},
          Case{"Shift+F10", [this] { QTest::keyClick(&table, Qt::Key_F10, Qt::ShiftModifier); },
               "gamma, no column", "gamma"},
          Case{"menu key", [this] { openMenu(table, Keyboard, {}); }, "gamma, no column", "gamma"},
          Case{"menu key without a selection",
               [this] {
                   content.select(std::nullopt), handleEvents();
                   openMenu(table, Keyboard, {});
               },
               "general", "nothing"}}) {
        SCOPED_TRACE(name);
        open();
        const auto* opened = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(opened);
        EXPECT_EQ(opened->actions()[0]->text(), menu);
        if (QString(name) == "Shift+F10") {
            EXPECT_EQ(opened->pos(), table.viewport()->mapToGlobal(QPoint(0, cell(2).bottom() + 1)));
        }
        QApplication::activePopupWidget()->close();
        handleEvents();
        EXPECT_EQ(selectedTitle(), selected);
    }
    EXPECT_TRUE(activated.empty());
}

TEST_F(ItemTableTest, keyThatStaysOnItsRowScrollsItIntoView) {
    table.resize(1300, table.horizontalHeader()->height() + 2 * table.rowHeight(0));
    using Case = std::tuple<Qt::Key, Qt::KeyboardModifiers, int>;
    for (const auto& [key, modifiers, row] :
         {Case{Qt::Key_Up, Qt::ControlModifier, 0}, Case{Qt::Key_Up, Qt::NoModifier, 0},
          Case{Qt::Key_Home, Qt::ControlModifier, 0}, Case{Qt::Key_Down, Qt::ControlModifier, 2},
          Case{Qt::Key_Down, Qt::NoModifier, 2}}) {
        content.select(content.filteredItems()[static_cast<std::size_t>(row)].id);
        table.showState(state());
        table.scrollTo(table.model()->index(2 - row, 0));
        ASSERT_FALSE(isInView(row)) << key;
        QTest::keyClick(&table, key, modifiers);
        EXPECT_TRUE(isInView(row)) << key << " " << modifiers;
    }
}

TEST_F(ItemTableTest, selectedRowStaysInViewWhenTheTableShrinks) {
    const int header = table.horizontalHeader()->height();
    for (const int row : {0, 2}) {
        table.resize(1300, header + 3 * table.rowHeight(0));
        content.select(content.filteredItems()[static_cast<std::size_t>(row)].id);
        handleEvents();
        table.resize(1300, header + table.rowHeight(0));
        QCoreApplication::processEvents();
        EXPECT_TRUE(isInView(row)) << row;
    }
    table.scrollTo(table.model()->index(0, 0));
    table.resize(1300, header + table.rowHeight(0) + 1);
    QCoreApplication::processEvents();
    EXPECT_TRUE(isInView(0)) << "was out of view before";
}

TEST_F(ItemTableTest, shownSelectionAndStoredWidthsAreNotReported) {
    content.select(lastSelection(content.filteredItems()));
    handleEvents();
    EXPECT_EQ(table.selectionModel()->selectedRows(), QModelIndexList{table.model()->index(2, 0)});
    content.select(std::nullopt);
    handleEvents();
    EXPECT_FALSE(table.selectionModel()->hasSelection());
    EXPECT_TRUE(selections.empty());

    ContentViewState changed = state();
    changed.appState.columnWidths = {{"Title", 10}, {"Command", 320.5}, {"Params", 1e300}, {"Gone", 5}};
    table.showState(changed);
    QCoreApplication::processEvents();
    EXPECT_EQ(table.columnWidth(0), 48) << "bounds";
    EXPECT_EQ(table.columnWidth(1), 320) << "within half a point";
    EXPECT_GT(table.columnWidth(2), 1000);
    EXPECT_EQ(table.columnWidth(3), 220) << "not stored";
    EXPECT_TRUE(widths.empty());
}

TEST_F(ItemTableTest, resizedColumnIsReportedOnceAfterADrag) {
    QWidget* header = table.horizontalHeader()->viewport();
    const QPoint border(table.columnViewportPosition(1) - 1, header->height() / 2);
    QTest::mousePress(header, Qt::LeftButton, {}, border);
    for (int step = 1; step <= 20; ++step)
        QTest::mouseMove(header, border + QPoint(step, 0));
    QCoreApplication::processEvents();
    EXPECT_TRUE(widths.empty()) << "the button is still down";
    QTest::mouseRelease(header, Qt::LeftButton, {}, border + QPoint(20, 0));
    QCoreApplication::processEvents();
    table.setColumnWidth(1, 100);
    QCoreApplication::processEvents();
    EXPECT_EQ(widths, (std::vector<std::pair<std::string, double>>{{"Title", 260}, {"Command", 100}}));
}

} // namespace kavendra
