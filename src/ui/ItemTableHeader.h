#pragma once

#include <QHeaderView>

namespace kavendra {

/// The column titles: flat, in line with the cells, with a short line where a column can be resized.
class ItemTableHeader final : public QHeaderView {
public:
    explicit ItemTableHeader(QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int column) const override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kavendra
