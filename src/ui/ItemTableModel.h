#pragma once

#include "app/ContentView.h"

#include <QAbstractTableModel>

namespace kavendra {

/// Qt's view of the filtered items. A row is an index into the items; the text of a cell is made when asked
/// for.
class ItemTableModel final : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Shows these rows and keeps both objects until the next call. Returns false, without a reset, if they
    /// are shown already.
    bool setRows(std::shared_ptr<const LoadedItems> items,
                 std::shared_ptr<const std::vector<std::uint32_t>> rows);

    LaunchItem item(int row) const;
    UUID itemID(int row) const;
    /// Returns the whole text of a cell, as in the data file.
    std::string_view text(int row, int column) const;
    /// Returns the direction of a text in a column; it does not depend on the window's.
    static Qt::LayoutDirection textDirection(int column, const QString& text);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::size_t itemIndex(int row) const { return (*m_rows)[static_cast<std::size_t>(row)]; }

    std::shared_ptr<const LoadedItems> m_items;
    std::shared_ptr<const std::vector<std::uint32_t>> m_rows;
};

} // namespace kavendra
