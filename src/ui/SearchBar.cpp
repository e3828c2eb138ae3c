#include "ui/SearchBar.h"

#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QPainter>

namespace kavendra {

SearchBar::SearchBar(QWidget* parent)
    : QWidget(parent), field(new SearchField), folder(new MenuButton(QStringLiteral("folder"))),
      gear(new MenuButton(QStringLiteral("gear"))) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 12, 16, 12);
    row->setSpacing(8); // the field takes the folder button's room while that is hidden
    field->setMinimumHeight(MenuButton::side);
    row->addWidget(field, 1);
    row->addWidget(folder);
    row->addWidget(gear);
    folder->hide();
}

void SearchBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), searchBarColor(palette()));
    painter.setPen(separatorColor(palette()));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace kavendra
