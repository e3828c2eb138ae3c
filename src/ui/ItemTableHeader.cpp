#include "ui/ItemTableHeader.h"

#include "ui/DisplayText.h"
#include "ui/ItemCellDelegate.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QStyle>

namespace kavendra {

namespace {

constexpr int titlePadding = 10; ///< above and below the title, together
constexpr int dividerInset = 6;  ///< above and below the line between two titles

} // namespace

ItemTableHeader::ItemTableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setHighlightSections(false);
}

QSize ItemTableHeader::sizeHint() const {
    return {QHeaderView::sizeHint().width(), fontMetrics().height() + titlePadding};
}

void ItemTableHeader::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    // Behind the last column the style has drawn what it thinks an empty header looks like.
    const QRect rest = QStyle::visualRect(layoutDirection(), viewport()->rect(),
                                          viewport()->rect().adjusted(length() - offset(), 0, 0, 0));
    QPainter painter(viewport());
    painter.fillRect(rest, palette().color(QPalette::Base));
    painter.setPen(separatorColor(palette()));
    painter.drawLine(rest.bottomLeft(), rest.bottomRight());
}

void ItemTableHeader::paintSection(QPainter* painter, const QRect& rect, int column) const {
    painter->fillRect(rect, palette().color(QPalette::Base));
    painter->setPen(separatorColor(palette()));
    const int end = layoutDirection() == Qt::LeftToRight ? rect.right() : rect.left();
    painter->drawLine(end, rect.top() + dividerInset, end, rect.bottom() - dividerInset);
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    const QRect room = cellTextRect(rect, layoutDirection());
    const QString title = model()->headerData(column, Qt::Horizontal).toString();
    painter->setPen(secondaryTextColor(palette()));
    drawLine(*painter, room, Qt::AlignLeading | Qt::AlignVCenter,
             fontMetrics().elidedText(title, Qt::ElideRight, room.width()), naturalDirection(title));
}

} // namespace kavendra
