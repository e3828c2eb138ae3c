#include "ui/SearchBar.h"

#include "ui/Colors.h"

#include <QHBoxLayout>
#include <QPainter>

namespace kavendra {

SearchBar::SearchBar(QWidget* parent)
    : QWidget(parent), field(new SearchField), folder(new MenuButton(QStringLiteral("folder"))),
      gear(new MenuButton(QStringLiteral("gear"))) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 12, 16, 12);
    row->setSpacing(8);
    field->setMinimumHeight(MenuButton::side);
    row->addWidget(field, 1);
    row->addWidget(folder);
    row->addWidget(gear);
    // The field is as wide without the button as with it: nothing moves under the eyes of who types.
    QSizePolicy keepsItsRoom = folder->sizePolicy();
    keepsItsRoom.setRetainSizeWhenHidden(true);
    folder->setSizePolicy(keepsItsRoom);
    folder->hide();
}

void SearchBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), searchBarColor(palette()));
    painter.setPen(separatorColor(palette()));
    painter.drawLine(rect().bottomLeft(), rect().bottomRight());
}

} // namespace kavendra
