#pragma once

#include "app/Menu.h"
#include "ui/ItemTableHeader.h"
#include "ui/ItemTableModel.h"
#include "ui/RowPress.h"

#include <QTableView>

#include <functional>

namespace kavendra {

/// The table of filtered items. It shows a state and reports what the user does to the callbacks, all of
/// which must be set.
class ItemTable final : public QTableView {
public:
    explicit ItemTable(QWidget* parent = nullptr);

    /// Called for a completed click on a row, and for Enter with the selected row.
    std::function<void(const LaunchItem&)> onActivate;
    /// Called after the event that changed the selection.
    std::function<void(const std::optional<UUID>&)> onSelect;
    /// Called for a key that types text.
    std::function<void(QKeyEvent&)> onType;
    /// As ItemTableHeader::onWidthChange.
    std::function<void(const std::string& columnIdentifier, double width)> onColumnWidthChange;

    /// Returns the menu of a row. `column` is empty if the menu is opened outside all columns or by a key.
    std::function<Menu(const LaunchItem&, std::optional<ItemColumn> column)> itemMenuProvider;
    /// Returns the menu for the area without rows.
    std::function<Menu()> generalMenuProvider;

    /// Shows the state's rows, selection and column widths; scrolls the selected row into view.
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
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void showSelection(const ContentViewState& state);
    void selectOnly(int row);
    void scrollToRow(int row);
    void moveToEdge(Qt::Key key);
    void activateSelectedRow();
    void showMenuAt(const QPoint& position);
    void showMenuOfSelectedRow();
    std::optional<int> selectedRow() const;
    std::optional<int> rowAtPointer(const QMouseEvent* event) const;
    QString overflowText(const QModelIndex& index) const;

    ItemTableModel m_model;
    ItemTableHeader* m_header;
    RowPress m_press{*viewport()};
    bool m_isShowingState = false; ///< a change of the selection is not the user's
};

} // namespace kavendra
