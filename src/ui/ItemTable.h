#pragma once

#include "app/Menu.h"
#include "config/StateFile.h"
#include "ui/ItemTableModel.h"
#include "ui/RowPress.h"

#include <QTableView>

#include <functional>

namespace kavendra {

/// The table of filtered items. It presents and forwards: what a click, a key or a resize means is up to the
/// callbacks.
class ItemTable final : public QTableView {
public:
    explicit ItemTable(QWidget* parent = nullptr);

    std::function<void(const LaunchItem&)> onActivate;
    std::function<void(const std::optional<UUID>&)> onSelect;
    std::function<void(const std::string& columnIdentifier, double width)> onColumnWidthChange;

    /// Asked for the menu of a row; there is no column when it was opened outside all of them or by a key.
    std::function<Menu(const LaunchItem&, std::optional<ItemColumn> column)> itemMenuProvider;
    /// Asked for the menu of where there is no row.
    std::function<Menu()> generalMenuProvider;

    /// Shows the state's rows, selection and column widths.
    void showState(const ContentViewState& state);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showRows(const ContentViewState& state);
    void applyColumnWidths(const ColumnWidths& widths);
    void pushSelection(const ContentViewState& state);
    void selectOnly(int row);
    void scrollToRow(int row);
    void reportColumnWidth(int column);
    void reportResizedColumns();
    void activateSelectedRow();
    void showMenuAt(const QPoint& position);
    void showMenuOfSelectedRow();
    int selectedRow() const;
    std::optional<int> rowUnder(const QMouseEvent* event) const;
    QString overflowText(const QModelIndex& index) const;

    ItemTableModel rowsModel;
    RowPress press{*viewport()};
    std::vector<int> resizedColumns; ///< by the drag that is going on
    bool isSynchronizingSelection = false;
    bool isApplyingColumnWidths = false;
};

} // namespace kavendra
