#include "ui/ItemTable.h"

#include "ui/DisplayText.h"
#include "ui/ItemCellDelegate.h"
#include "ui/ItemTableHeader.h"
#include "ui/MenuBuilder.h"
#include "ui/ToolTip.h"

#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace kavendra {

namespace {

constexpr int minimumColumnWidth = 48;
constexpr int rowPadding = 10; ///< above and below the text of a row, together
constexpr double widthTolerance = 0.5;

/// Returns the column at an index of the table, nothing for a negative one.
std::optional<ItemColumn> columnAtIndex(int index) {
    return index < 0 ? std::nullopt : std::optional(static_cast<ItemColumn>(index));
}

} // namespace

ItemTable::ItemTable(QWidget* parent) : QTableView(parent) {
    setModel(&rowsModel);
    setItemDelegate(new ItemCellDelegate(this));
    setHorizontalHeader(new ItemTableHeader(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setFocusPolicy(Qt::TabFocus); // what is typed after a click goes on with the query
    setFrameShape(NoFrame);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setAutoScroll(false); // it would scroll sideways too

    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);

    QHeaderView* header = horizontalHeader();
    header->setMinimumSectionSize(minimumColumnWidth);
    for (std::size_t column = 0; column < itemColumns.size(); ++column)
        header->resizeSection(static_cast<int>(column), itemColumns[column].initialWidth);
    header->viewport()->installEventFilter(this);
    connect(header, &QHeaderView::sectionResized, this, [this](int column) { reportColumnWidth(column); });
}

void ItemTable::showState(const ContentViewState& state) {
    const QScopedValueRollback synchronizing(isSynchronizingSelection, true);
    applyColumnWidths(state.appState.columnWidths);
    if (!rowsModel.shows(state.items, state.filteredRows))
        showRows(state);
    pushSelection(state);
}

void ItemTable::showRows(const ContentViewState& state) {
    press.giveUp(); // another row may be under the pointer now
    rowsModel.setRows(state.items, state.filteredRows);
}

// The selected row goes all the way across, also where the columns end before the window does.
void ItemTable::paintEvent(QPaintEvent* event) {
    if (const int row = selectedRow(); row >= 0) {
        const auto group = isActiveWindow() ? QPalette::Active : QPalette::Inactive;
        QPainter(viewport())
            .fillRect(0, rowViewportPosition(row), viewport()->width(), rowHeight(row),
                      palette().brush(group, QPalette::Highlight));
    }
    QTableView::paintEvent(event);
}

void ItemTable::applyColumnWidths(const ColumnWidths& widths) {
    const QScopedValueRollback applying(isApplyingColumnWidths, true);
    for (int column = 0; column < rowsModel.columnCount(); ++column) {
        const auto stored = widths.find(itemColumns[static_cast<std::size_t>(column)].identifier);
        if (stored == widths.end() || std::abs(columnWidth(column) - stored->second) <= widthTolerance)
            continue;
        const double width =
            std::clamp<double>(stored->second, minimumColumnWidth, horizontalHeader()->maximumSectionSize());
        setColumnWidth(column, static_cast<int>(std::lround(width)));
    }
}

void ItemTable::pushSelection(const ContentViewState& state) {
    const FilteredItems filtered{state.items->list, *state.filteredRows};
    const auto position = filtered.positionOf(state.selectedItemID);
    if (!position) {
        selectionModel()->clear();
        return;
    }
    const auto row = static_cast<int>(*position);
    if (selectedRow() != row)
        selectOnly(row);
    if (!press.isActive()) // a row must not move away from under the pointer
        scrollToRow(row);
}

// QTableView::selectRow selects nothing before the first layout.
void ItemTable::selectOnly(int row) {
    selectionModel()->setCurrentIndex(rowsModel.index(row, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ItemTable::scrollToRow(int row) {
    const int horizontal = horizontalScrollBar()->value();
    scrollTo(rowsModel.index(row, 0));
    horizontalScrollBar()->setValue(horizontal);
}

int ItemTable::selectedRow() const {
    const QItemSelection selection = selectionModel()->selection();
    return selection.isEmpty() ? -1 : selection.first().top();
}

void ItemTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    // The view also calls this when nothing has changed, as while it is being made.
    if (isSynchronizingSelection || (selected.isEmpty() && deselected.isEmpty()))
        return;
    const int row = selectedRow();
    const auto id = row >= 0 ? std::optional(rowsModel.itemID(row)) : std::nullopt;
    QMetaObject::invokeMethod(this, [this, id] { onSelect(id); }, Qt::QueuedConnection);
}

void ItemTable::activateSelectedRow() {
    if (const int row = selectedRow(); row >= 0)
        onActivate(rowsModel.item(row));
}

void ItemTable::keyPressEvent(QKeyEvent* event) {
    const bool command = event->modifiers().testFlag(Qt::ControlModifier);
    const int lastRow = rowsModel.rowCount() - 1;
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        activateSelectedRow();
    } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        showMenuOfSelectedRow(); // the menu key of keyboards that have none
    } else if (command && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
        if (lastRow >= 0) {
            const int row = event->key() == Qt::Key_Up ? 0 : lastRow;
            selectOnly(row);
            scrollToRow(row);
        }
    } else {
        QTableView::keyPressEvent(event);
    }
}

// Also shows a row that the key does not move away from, as Up on the first one: its selection does not
// change, so no new state comes that would show it.
QModelIndex ItemTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex destination = QTableView::moveCursor(action, modifiers);
    if (destination.isValid())
        scrollToRow(destination.row());
    return destination;
}

/// Returns the row under the pointer, also right of the last column.
std::optional<int> ItemTable::rowUnder(const QMouseEvent* event) const {
    const QPoint position = event->position().toPoint();
    const int row = viewport()->rect().contains(position) ? rowAt(position.y()) : -1;
    return row >= 0 ? std::optional(row) : std::nullopt;
}

// A press selects at once; the row is launched when the button is released on it, without having left it.
void ItemTable::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const auto row = rowUnder(event);
    press.begin(row);
    if (row)
        selectOnly(*row);
    else
        clearSelection();
}

void ItemTable::mouseMoveEvent(QMouseEvent* event) {
    press.moveTo(rowUnder(event));
}

void ItemTable::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    if (const auto row = press.release(rowUnder(event)))
        onActivate(rowsModel.item(*row));
}

void ItemTable::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void ItemTable::contextMenuEvent(QContextMenuEvent* event) {
    if (press.isActive())
        return; // the menu would take the release
    if (event->reason() == QContextMenuEvent::Keyboard)
        showMenuOfSelectedRow();
    else
        showMenuAt(event->pos());
}

/// Opens the menu of what is at a point of the viewport.
void ItemTable::showMenuAt(const QPoint& position) {
    const QPoint global = viewport()->mapToGlobal(position);
    const int row = rowAt(position.y());
    if (row < 0)
        return showMenu(generalMenuProvider(), *this, global);
    selectOnly(row);
    const int column = columnAt(position.x());
    showMenu(itemMenuProvider(rowsModel.item(row), columnAtIndex(column)), *this, global);
}

void ItemTable::showMenuOfSelectedRow() {
    const int row = selectedRow();
    if (row < 0)
        return showMenu(generalMenuProvider(), *this, viewport()->mapToGlobal(QPoint()));
    scrollToRow(row);
    const int below = rowViewportPosition(row) + rowHeight(row);
    showMenu(itemMenuProvider(rowsModel.item(row), std::nullopt), *this,
             viewport()->mapToGlobal(QPoint(0, below)));
}

bool ItemTable::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QTableView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    const QString text = overflowText(index);
    const auto direction = ItemTableModel::textDirection(std::max(0, index.column()), text);
    showToolTip(*viewport(), help->globalPos(), visualRect(index), text, direction);
    return true;
}

QString ItemTable::overflowText(const QModelIndex& index) const {
    if (!index.isValid())
        return {};
    const std::string_view text = rowsModel.text(index.row(), index.column());
    const int room = std::max(0, columnWidth(index.column()) - cellPaddingLeading - cellPaddingTrailing);
    return fontMetrics().horizontalAdvance(singleLine(text)) > room
               ? withVisibleMarks(QString::fromUtf8(text))
               : QString();
}

void ItemTable::reportColumnWidth(int column) {
    if (isApplyingColumnWidths)
        return;
    resizedColumns.push_back(column);
    // A drag is reported once, when it ends.
    if (!QGuiApplication::mouseButtons().testFlag(Qt::LeftButton))
        reportResizedColumns();
}

void ItemTable::reportResizedColumns() {
    std::ranges::sort(resizedColumns);
    const auto repeated = std::ranges::unique(resizedColumns);
    resizedColumns.erase(repeated.begin(), repeated.end());
    for (const int column : std::exchange(resizedColumns, {})) {
        const std::string identifier(itemColumns[static_cast<std::size_t>(column)].identifier);
        const double width = columnWidth(column);
        QMetaObject::invokeMethod(
            this, [this, identifier, width] { onColumnWidthChange(identifier, width); },
            Qt::QueuedConnection);
    }
}

bool ItemTable::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && watched == horizontalHeader()->viewport())
        reportResizedColumns();
    return QTableView::eventFilter(watched, event);
}

} // namespace kavendra
