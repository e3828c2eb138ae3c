#pragma once

#include <QAbstractItemDelegate>

namespace kavendra {

// What of a column's width its text cannot use, in points.
inline constexpr int cellPaddingLeading = 8;
inline constexpr int cellPaddingTrailing = 4;

/// Returns where in a cell, or in the head of a column, its text stands.
QRect cellTextRect(const QRect& cell, Qt::LayoutDirection layoutDirection);

/// Draws a cell as one line of text that is cut with an ellipsis. There is no focus frame: the selected row,
/// in the accent colour also while the search field has the focus, alone says where one is.
class ItemCellDelegate final : public QAbstractItemDelegate {
public:
    using QAbstractItemDelegate::QAbstractItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace kavendra
