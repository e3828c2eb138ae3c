#include "ui/ItemTableModel.h"

#include "ui/DisplayText.h"

namespace kavendra {

void ItemTableModel::setRows(std::shared_ptr<const LoadedItems> newItems,
                             std::shared_ptr<const std::vector<std::uint32_t>> newRows) {
    beginResetModel();
    items = std::move(newItems);
    rows = std::move(newRows);
    endResetModel();
}

bool ItemTableModel::shows(const std::shared_ptr<const LoadedItems>& otherItems,
                           const std::shared_ptr<const std::vector<std::uint32_t>>& otherRows) const {
    return items == otherItems && rows == otherRows;
}

LaunchItem ItemTableModel::item(int row) const {
    return items->list[itemIndex(row)];
}

UUID ItemTableModel::itemID(int row) const {
    return items->list.id(itemIndex(row));
}

std::string_view ItemTableModel::text(int row, int column) const {
    return items->list.value(itemIndex(row), static_cast<ItemColumn>(column));
}

Qt::LayoutDirection ItemTableModel::textDirection(int column, const QString& text) {
    return itemColumns[static_cast<std::size_t>(column)].isProse ? naturalDirection(text) : Qt::LeftToRight;
}

int ItemTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || !rows ? 0 : static_cast<int>(rows->size());
}

int ItemTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(itemColumns.size());
}

QVariant ItemTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return singleLine(text(index.row(), index.column()));
    // The first cell stands for its row: a screen reader says what it is and what it does.
    if (role == Qt::AccessibleTextRole && index.column() == 0)
        return singleLine(text(index.row(), 0)) + ", " + singleLine(text(index.row(), 1));
    return {};
}

QVariant ItemTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromUtf8(itemColumns[static_cast<std::size_t>(section)].headerTitle);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignLeading | Qt::AlignVCenter);
    return {};
}

} // namespace kavendra
