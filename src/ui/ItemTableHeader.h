#pragma once

#include "config/StateFile.h"

#include <QHeaderView>

#include <functional>
#include <set>

namespace kavendra {

/// The column titles: flat and aligned with the cells, with a short line at each column's end. It applies the
/// stored column widths and reports those that the user sets.
class ItemTableHeader final : public QHeaderView {
public:
    explicit ItemTableHeader(QWidget* parent);

    /// Called once for each resized column, after the event: for a drag when the button is released.
    /// The width is in points.
    std::function<void(const std::string& columnIdentifier, double width)> onWidthChange;

    void applyInitialWidths();
    /// Applies stored widths, rounded and at least the minimum width, without reporting them. A column whose
    /// width is not stored keeps its own.
    void applyWidths(const ColumnWidths& widths);

    QSize sizeHint() const override;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int column) const override;
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void applyWidth(int column, double width);
    void noteResize(int column);
    void reportResizedColumns();

    std::set<int> m_resizedColumns; ///< not reported yet
    bool m_isApplyingWidth = false;
};

} // namespace kavendra
