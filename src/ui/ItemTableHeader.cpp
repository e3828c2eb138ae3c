#include "ui/ItemTableHeader.h"

#include "data/LaunchItem.h"
#include "ui/DisplayText.h"
#include "ui/ItemCellDelegate.h"
#include "ui/Theme.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyle>

#include <cmath>

namespace kavendra {

namespace {

constexpr int minimumColumnWidth = 48;
constexpr double widthTolerance = 0.5; ///< a stored width that differs by no more is not applied
constexpr int titlePadding = 10;       ///< above and below the title, together
constexpr int dividerInset = 6;        ///< above and below the line between two titles

} // namespace

ItemTableHeader::ItemTableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setHighlightSections(false);
    setMinimumSectionSize(minimumColumnWidth);
    connect(this, &QHeaderView::sectionResized, this, &ItemTableHeader::noteResize);
}

void ItemTableHeader::applyInitialWidths() {
    for (std::size_t column = 0; column < itemColumns.size(); ++column)
        applyWidth(static_cast<int>(column), itemColumns[column].initialWidth);
}

void ItemTableHeader::applyWidths(const ColumnWidths& widths) {
    for (std::size_t column = 0; column < itemColumns.size(); ++column)
        if (const auto stored = widths.find(itemColumns[column].identifier);
            stored != widths.end() &&
            std::abs(sectionSize(static_cast<int>(column)) - stored->second) > widthTolerance)
            applyWidth(static_cast<int>(column), stored->second);
}

void ItemTableHeader::applyWidth(int column, double width) {
    const QScopedValueRollback applying(m_isApplyingWidth, true);
    const double applied = std::clamp<double>(width, minimumColumnWidth, maximumSectionSize());
    resizeSection(column, static_cast<int>(std::lround(applied)));
}

void ItemTableHeader::noteResize(int column) {
    if (m_isApplyingWidth)
        return;
    m_resizedColumns.insert(column);
    const bool isDrag = QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    if (!isDrag)
        reportResizedColumns();
}

void ItemTableHeader::reportResizedColumns() {
    for (const int column : std::exchange(m_resizedColumns, {})) {
        const auto report = [this, width = sectionSize(column),
                             identifier =
                                 std::string(properties(static_cast<ItemColumn>(column)).identifier)] {
            onWidthChange(identifier, width);
        };
        QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
    }
}

void ItemTableHeader::mouseReleaseEvent(QMouseEvent* event) {
    QHeaderView::mouseReleaseEvent(event);
    reportResizedColumns();
}

QSize ItemTableHeader::sizeHint() const {
    return {QHeaderView::sizeHint().width(), fontMetrics().height() + titlePadding};
}

void ItemTableHeader::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    // Cover the empty section that the style has drawn behind the last column.
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
    const QRect textRect = cellTextRect(rect, layoutDirection());
    const QString title = model()->headerData(column, Qt::Horizontal).toString();
    painter->setPen(secondaryTextColor(palette()));
    drawLine(*painter, textRect, Qt::AlignLeading | Qt::AlignVCenter,
             fontMetrics().elidedText(title, Qt::ElideRight, textRect.width()), naturalDirection(title));
}

} // namespace kavendra
