#pragma once

#include "app/ContentView.h"

#include <QAbstractTableModel>

namespace kavendra {

/// The filtered items as a table: a row is an index into the items, a text is made when a cell is painted.
class ItemTableModel final : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Shows other rows; both parts are kept until the next call.
    void setRows(std::shared_ptr<const LoadedItems> items,
                 std::shared_ptr<const std::vector<std::uint32_t>> rows);

    bool shows(const std::shared_ptr<const LoadedItems>& items,
               const std::shared_ptr<const std::vector<std::uint32_t>>& rows) const;

    LaunchItem item(int row) const;
    UUID itemID(int row) const;
    /// The whole text of a cell, as it stands in the data file.
    std::string_view text(int row, int column) const;
    /// The direction in which a text of a column runs, whatever the window's.
    static Qt::LayoutDirection textDirection(int column, const QString& text);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::size_t itemIndex(int row) const { return (*rows)[static_cast<std::size_t>(row)]; }

    std::shared_ptr<const LoadedItems> items;
    std::shared_ptr<const std::vector<std::uint32_t>> rows;
};

} // namespace kavendra
