#include "ui/ItemTableModel.h"

#include "ui/DisplayText.h"

namespace kavendra {

bool ItemTableModel::setRows(std::shared_ptr<const LoadedItems> items,
                             std::shared_ptr<const std::vector<std::uint32_t>> rows) {
    if (items == m_items && rows == m_rows)
        return false;
    beginResetModel();
    m_items = std::move(items);
    m_rows = std::move(rows);
    endResetModel();
    return true;
}

LaunchItem ItemTableModel::item(int row) const {
    return m_items->list[itemIndex(row)];
}

UUID ItemTableModel::itemID(int row) const {
    return m_items->list.id(itemIndex(row));
}

std::string_view ItemTableModel::text(int row, int column) const {
    return m_items->list.value(itemIndex(row), static_cast<ItemColumn>(column));
}

Qt::LayoutDirection ItemTableModel::textDirection(int column, const QString& text) {
    return properties(static_cast<ItemColumn>(column)).isProse ? naturalDirection(text) : Qt::LeftToRight;
}

int ItemTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || !m_rows ? 0 : static_cast<int>(m_rows->size());
}

int ItemTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(itemColumns.size());
}

QVariant ItemTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return singleLine(text(index.row(), index.column()));
    // A screen reader reads the first cell for its row: the title and the command.
    if (role == Qt::AccessibleTextRole && index.column() == 0)
        return singleLine(text(index.row(), 0)) + ", " + singleLine(text(index.row(), 1));
    return {};
}

QVariant ItemTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromUtf8(properties(static_cast<ItemColumn>(section)).headerTitle);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignLeading | Qt::AlignVCenter);
    return {};
}

} // namespace kavendra
