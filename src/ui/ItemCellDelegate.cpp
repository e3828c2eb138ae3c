#include "ui/ItemCellDelegate.h"

#include "ui/DisplayText.h"
#include "ui/ItemTableModel.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace kavendra {

QRect cellTextRect(const QRect& cell, Qt::LayoutDirection layoutDirection) {
    return QStyle::visualRect(layoutDirection, cell,
                              cell.adjusted(cellPaddingLeading, 0, -cellPaddingTrailing, 0));
}

void ItemCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const auto group = option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    if (isSelected)
        painter->fillRect(
            option.rect, selectedRowColor(option.palette, group, option.widget && option.widget->hasFocus()));
    const QRect textRect = cellTextRect(option.rect, option.direction);
    const QString line =
        option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, textRect.width());
    painter->setFont(option.font);
    painter->setPen(option.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text));
    drawLine(*painter, textRect, Qt::AlignLeading | Qt::AlignVCenter, line,
             ItemTableModel::textDirection(index.column(), line));
}

QSize ItemCellDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int textWidth = option.fontMetrics.horizontalAdvance(index.data().toString());
    return {textWidth + cellPaddingLeading + cellPaddingTrailing, option.fontMetrics.height()};
}

} // namespace kavendra
