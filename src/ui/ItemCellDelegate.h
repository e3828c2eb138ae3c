#pragma once

#include <QAbstractItemDelegate>

namespace kavendra {

// Space between the edges of a cell and its text, in points.
inline constexpr int cellPaddingLeading = 8;
inline constexpr int cellPaddingTrailing = 4;

/// Returns the text rectangle of a cell or a column title.
QRect cellTextRect(const QRect& cell, Qt::LayoutDirection layoutDirection);

/// Draws a cell as one elided line of text, without a focus frame. A selected cell is in the accent colour
/// also while the search field has the focus, in a
/// deeper tone of it while the table has.
class ItemCellDelegate final : public QAbstractItemDelegate {
public:
    using QAbstractItemDelegate::QAbstractItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace kavendra
