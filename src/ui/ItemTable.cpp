#include "ui/ItemTable.h"

#include "ui/DisplayText.h"
#include "ui/ItemCellDelegate.h"
#include "ui/MenuBuilder.h"
#include "ui/Theme.h"
#include "ui/ToolTip.h"

#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace kavendra {

namespace {

constexpr int rowPadding = 10; ///< above and below the text of a row, together

bool typesText(const QKeyEvent& event) {
    const bool isCommand = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !isCommand && !event.text().isEmpty() && event.text().front().isPrint();
}

} // namespace

ItemTable::ItemTable(QWidget* parent) : QTableView(parent), m_header(new ItemTableHeader(this)) {
    setModel(&m_model);
    setItemDelegate(new ItemCellDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setFocusPolicy(Qt::TabFocus); // a click leaves the focus in the search field
    setFrameShape(NoFrame);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setAutoScroll(false); // it would also scroll horizontally

    setHorizontalHeader(m_header);
    m_header->applyInitialWidths();
    m_header->onWidthChange = [this](const std::string& columnIdentifier, double width) {
        onColumnWidthChange(columnIdentifier, width);
    };
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
}

void ItemTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
}

void ItemTable::showState(const ContentViewState& state) {
    const QScopedValueRollback showing(m_isShowingState, true);
    m_header->applyWidths(state.appState.columnWidths);
    if (m_model.setRows(state.items, state.filteredRows))
        m_press.cancel(); // another row may be under the pointer now
    showSelection(state);
}

void ItemTable::showSelection(const ContentViewState& state) {
    const FilteredItems filtered{state.items->list, *state.filteredRows};
    const auto position = filtered.positionOf(state.selectedItemID);
    if (!position)
        return selectionModel()->clear();
    const auto row = static_cast<int>(*position);
    if (selectedRow() != row)
        selectOnly(row);
    if (!m_press.isActive()) // the pressed row must stay under the pointer
        scrollToRow(row);
}

// QTableView::selectRow selects nothing before the first layout.
void ItemTable::selectOnly(int row) {
    selectionModel()->setCurrentIndex(m_model.index(row, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ItemTable::scrollToRow(int row) {
    const int horizontal = horizontalScrollBar()->value();
    scrollTo(m_model.index(row, 0));
    horizontalScrollBar()->setValue(horizontal);
}

std::optional<int> ItemTable::selectedRow() const {
    const QItemSelection selection = selectionModel()->selection();
    return selection.isEmpty() ? std::nullopt : std::optional(selection.first().top());
}

void ItemTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    // The view also calls this without a change, for example while it is constructed.
    if (m_isShowingState || (selected.isEmpty() && deselected.isEmpty()))
        return;
    const auto row = selectedRow();
    const auto id = row ? std::optional(m_model.itemID(*row)) : std::nullopt;
    QMetaObject::invokeMethod(this, [this, id] { onSelect(id); }, Qt::QueuedConnection);
}

void ItemTable::activateSelectedRow() {
    if (const auto row = selectedRow())
        onActivate(m_model.item(*row));
}

void ItemTable::keyPressEvent(QKeyEvent* event) {
    const auto key = static_cast<Qt::Key>(event->key());
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        activateSelectedRow();
    else if (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
        showMenuOfSelectedRow(); // stands for the menu key
    else if ((key == Qt::Key_Up || key == Qt::Key_Down) && event->modifiers().testFlag(Qt::ControlModifier))
        moveToEdge(key);
    else if (typesText(*event))
        onType(*event);
    else
        QTableView::keyPressEvent(event);
}

/// Moves to the first row for Key_Up, to the last for Key_Down.
void ItemTable::moveToEdge(Qt::Key key) {
    if (m_model.rowCount() == 0)
        return;
    const int row = key == Qt::Key_Up ? 0 : m_model.rowCount() - 1;
    selectOnly(row);
    scrollToRow(row);
}

// Scrolls also when the key does not move, as Up on the first row: the selection does not change then, so no
// new state follows that would scroll.
QModelIndex ItemTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex destination = QTableView::moveCursor(action, modifiers);
    if (destination.isValid())
        scrollToRow(destination.row());
    return destination;
}

/// Returns the row under the pointer, also right of the last column.
std::optional<int> ItemTable::rowAtPointer(const QMouseEvent* event) const {
    const QPoint position = event->position().toPoint();
    const int row = viewport()->rect().contains(position) ? rowAt(position.y()) : -1;
    return row >= 0 ? std::optional(row) : std::nullopt;
}

// Selects at once and begins to track the press, whose release on the same row launches it.
void ItemTable::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const auto row = rowAtPointer(event);
    m_press.begin(row);
    if (row)
        selectOnly(*row);
    else
        clearSelection();
}

void ItemTable::mouseMoveEvent(QMouseEvent* event) {
    m_press.moveTo(rowAtPointer(event));
}

void ItemTable::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    if (const auto row = m_press.release(rowAtPointer(event)))
        onActivate(m_model.item(*row));
}

void ItemTable::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void ItemTable::contextMenuEvent(QContextMenuEvent* event) {
    if (m_press.isActive())
        return; // the menu would receive the release
    if (event->reason() == QContextMenuEvent::Keyboard)
        showMenuOfSelectedRow();
    else
        showMenuAt(event->pos());
}

/// Opens the menu for a position in the viewport.
void ItemTable::showMenuAt(const QPoint& position) {
    const QPoint global = viewport()->mapToGlobal(position);
    const int row = rowAt(position.y());
    if (row < 0)
        return showMenu(generalMenuProvider(), *this, global);
    selectOnly(row);
    const int index = columnAt(position.x());
    const auto column = index < 0 ? std::nullopt : std::optional(static_cast<ItemColumn>(index));
    showMenu(itemMenuProvider(m_model.item(row), column), *this, global);
}

void ItemTable::showMenuOfSelectedRow() {
    const auto row = selectedRow();
    if (!row)
        return showMenu(generalMenuProvider(), *this, viewport()->mapToGlobal(QPoint()));
    scrollToRow(*row);
    const QPoint below(0, rowViewportPosition(*row) + rowHeight(*row));
    showMenu(itemMenuProvider(m_model.item(*row), std::nullopt), *this, viewport()->mapToGlobal(below));
}

// Keeps the selected row in view if it was.
void ItemTable::resizeEvent(QResizeEvent* event) {
    const auto row = selectedRow();
    const int top = row ? rowViewportPosition(*row) : 0;
    const bool wasInView = row && top >= 0 && top < event->oldSize().height();
    QTableView::resizeEvent(event);
    if (wasInView)
        scrollToRow(*row);
}

// Extends the highlight of the selected row beyond the last column.
void ItemTable::paintEvent(QPaintEvent* event) {
    if (const auto row = selectedRow()) {
        const auto group = isActiveWindow() ? QPalette::Active : QPalette::Inactive;
        const QRect line(0, rowViewportPosition(*row), viewport()->width(), rowHeight(*row));
        QPainter(viewport()).fillRect(line, selectedRowColor(palette(), group, hasFocus()));
    }
    QTableView::paintEvent(event);
}

bool ItemTable::viewportEvent(QEvent* event) {
    const bool isActivation =
        event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate;
    // QTableView would paint all rows a second time at the start, when the window becomes active.
    if (isActivation && palette().isEqual(QPalette::Active, QPalette::Inactive))
        return QAbstractScrollArea::viewportEvent(event);
    if (event->type() != QEvent::ToolTip)
        return QTableView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    const QString text = overflowText(index);
    const auto direction = ItemTableModel::textDirection(std::max(0, index.column()), text);
    showToolTip(*viewport(), help->globalPos(), visualRect(index), text, direction);
    return true;
}

/// Returns the whole text of a cell if the column is too narrow for it, else nothing.
QString ItemTable::overflowText(const QModelIndex& index) const {
    if (!index.isValid())
        return {};
    const std::string_view text = m_model.text(index.row(), index.column());
    const int available = std::max(0, columnWidth(index.column()) - cellPaddingLeading - cellPaddingTrailing);
    const bool isElided = fontMetrics().horizontalAdvance(singleLine(text)) > available;
    return isElided ? withVisibleMarks(QString::fromUtf8(text)) : QString();
}

} // namespace kavendra
