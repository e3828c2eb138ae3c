#include "ui/ItemTable.h"

#include "tests/app/ContentViewFixture.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTest>

namespace kavendra {

namespace {

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
        content.appear();
        table.resize(1300, 300);
        table.show();
        table.showState(state());
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&table));
    }

    QPoint pointIn(int row) { return table.visualRect(table.model()->index(row, 0)).center(); }
    QPoint below() { return {pointIn(2).x(), pointIn(2).y() + 3 * table.rowHeight(2)}; }

    void deliver() {
        QCoreApplication::processEvents();
        table.showState(state());
    }

    ItemTable table;
    std::vector<std::string> activated;
    std::vector<std::string> selections;
    std::vector<std::pair<std::string, double>> widths;
};

using Titles = std::vector<std::string>;

} // namespace

TEST_F(ItemTableTest, showsFiveColumnsOfTheFilteredItems) {
    content.setSearchText("first");
    table.showState(state());
    const auto* model = table.model();
    ASSERT_EQ(model->rowCount(), 1);
    QStringList columns;
    for (int column = 0; column < model->columnCount(); ++column)
        columns << model->headerData(column, Qt::Horizontal).toString() + ": " +
                       model->index(0, column).data().toString();
    EXPECT_EQ(columns.join("; "), "Title: alpha; Command / Path: https://a.example/; Params: ; "
                                  "Keywords: first common; Source: items.csv");
}

TEST_F(ItemTableTest, aCompletedClickSelectsAndLaunches) {
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, pointIn(1));
    deliver();
    EXPECT_EQ(activated, Titles{"beta"});
    EXPECT_EQ(selections, Titles{"beta"});
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, {table.viewport()->width() - 5, pointIn(1).y()});
    EXPECT_EQ(activated.size(), 2U) << "right of the last column too";
    activated.pop_back();
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, pointIn(1));
    QTest::mouseRelease(table.viewport(), Qt::LeftButton, {}, pointIn(1));
    EXPECT_EQ(activated.size(), 2U) << "each completed click counts";
}

TEST_F(ItemTableTest, aPressThatLeavesTheRowLaunchesNothing) {
    QWidget* rows = table.viewport();
    QTest::mousePress(rows, Qt::LeftButton, {}, pointIn(1));
    QTest::mouseMove(rows, pointIn(2));
    QTest::mouseMove(rows, pointIn(1));
    QTest::mouseRelease(rows, Qt::LeftButton, {}, pointIn(1));
    QTest::mousePress(rows, Qt::LeftButton, {}, pointIn(0));
    QTest::mouseRelease(rows, Qt::LeftButton, {}, pointIn(2));
    QTest::mousePress(rows, Qt::LeftButton, {}, pointIn(1));
    QTest::keyClick(&table, Qt::Key_Escape);
    QTest::mouseRelease(rows, Qt::LeftButton, {}, pointIn(1));
    QTest::mouseClick(rows, Qt::RightButton, {}, pointIn(1));
    EXPECT_TRUE(activated.empty());
    QTest::mouseClick(rows, Qt::LeftButton, {}, below());
    deliver();
    EXPECT_TRUE(activated.empty());
    EXPECT_EQ(selections.back(), "nothing") << "a click below the rows deselects";
}

TEST_F(ItemTableTest, keysMoveAndLaunch) {
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_Down, Qt::ControlModifier);
    deliver();
    QTest::keyClick(&table, Qt::Key_Up);
    deliver();
    QTest::keyClick(&table, Qt::Key_Return);
    QTest::keyClick(&table, Qt::Key_Up, Qt::ControlModifier);
    deliver();
    QTest::keyClick(&table, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(selections, (Titles{"gamma", "beta", "alpha"}));
    EXPECT_EQ(activated, (Titles{"beta", "alpha"}));
}

TEST_F(ItemTableTest, aMoveThatStaysOnItsRowScrollsItIntoView) {
    table.resize(1300, 90); // room for about two rows
    struct Case {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        int row;
    };
    for (const Case& c :
         {Case{Qt::Key_Up, Qt::ControlModifier, 0}, Case{Qt::Key_Up, Qt::NoModifier, 0},
          Case{Qt::Key_Home, Qt::ControlModifier, 0}, Case{Qt::Key_Down, Qt::ControlModifier, 2},
          Case{Qt::Key_Down, Qt::NoModifier, 2}}) {
        SCOPED_TRACE(testing::Message() << c.key << " " << c.modifiers);
        QScrollBar& bar = *table.verticalScrollBar();
        const int shown = c.row == 0 ? bar.minimum() : bar.maximum();
        const int scrolledAway = c.row == 0 ? bar.maximum() : bar.minimum();
        ASSERT_NE(shown, scrolledAway);
        content.select(content.filteredItems()[static_cast<std::size_t>(c.row)].id);
        table.showState(state());
        bar.setValue(scrolledAway);
        QTest::keyClick(&table, c.key, c.modifiers);
        EXPECT_EQ(bar.value(), shown);
    }
}

TEST_F(ItemTableTest, theStatesSelectionIsShownAndNotReportedBack) {
    content.select(lastSelection(content.filteredItems()));
    deliver();
    EXPECT_EQ(table.selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(table.selectionModel()->selectedRows().front().row(), 2);
    content.select(std::nullopt);
    deliver();
    EXPECT_FALSE(table.selectionModel()->hasSelection());
    EXPECT_TRUE(selections.empty());
}

TEST_F(ItemTableTest, storedWidthsAreAppliedInBoundsAndNotReportedBack) {
    ContentViewState changed = state();
    changed.appState.columnWidths = {{"Title", 10}, {"Command", 320.4}, {"Params", 1e300}, {"Gone", 5}};
    table.showState(changed);
    QCoreApplication::processEvents();
    EXPECT_EQ(table.columnWidth(0), 48);
    EXPECT_EQ(table.columnWidth(1), 320) << "within half a point";
    EXPECT_GT(table.columnWidth(2), 1000);
    EXPECT_EQ(table.columnWidth(3), 220);
    EXPECT_TRUE(widths.empty());
}

TEST_F(ItemTableTest, aDraggedColumnIsReportedOnceWhenTheButtonIsReleased) {
    QWidget* header = table.horizontalHeader()->viewport();
    const QPoint border(table.columnViewportPosition(1) - 1, header->height() / 2);
    QTest::mousePress(header, Qt::LeftButton, {}, border);
    for (int step = 1; step <= 20; ++step)
        QTest::mouseMove(header, border + QPoint(step, 0));
    QTest::mouseRelease(header, Qt::LeftButton, {}, border + QPoint(20, 0));
    QCoreApplication::processEvents();
    ASSERT_EQ(widths.size(), 1U);
    EXPECT_EQ(widths[0], (std::pair<std::string, double>("Title", 260)));
}

TEST_F(ItemTableTest, aCellShowsOneLineWhateverItHolds) {
    writeItems("\"two\nlines\"," + std::string(100000, 'x') + ",\xE2\x80\xA8,\n");
    content.reloadData();
    table.showState(state());
    EXPECT_EQ(table.model()->index(0, 0).data().toString(), "two[LF]lines");
    EXPECT_LT(table.model()->index(0, 1).data().toString().size(), 5000)
        << "no more than a column could show";
    table.viewport()->repaint();
}

} // namespace kavendra
