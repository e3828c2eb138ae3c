#include "ui/SearchBar.h"

#include "ui/Colors.h"

#include <QHBoxLayout>
#include <QPainter>

namespace kavendra {

SearchBar::SearchBar(QWidget* parent) : QWidget(parent), field(new SearchField) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 12, 16, 12);
    row->setSpacing(8);
    row->addWidget(field, 1);
}

void SearchBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), searchBarColor(palette()));
    painter.setPen(separatorColor(palette()));
    painter.drawLine(rect().bottomLeft(), rect().bottomRight());
}

} // namespace kavendra
