#include "ui/SearchBar.h"

#include "ui/Colors.h"

#include <QHBoxLayout>
#include <QPainter>

namespace kavendra {

SearchBar::SearchBar(QWidget* parent)
    : QWidget(parent), field(new SearchField), folder(new MenuButton(QStringLiteral("folder"))) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 12, 16, 12);
    row->setSpacing(8);
    row->addStrut(MenuButton::side); // as high without the button as with it
    row->addWidget(field, 1);
    row->addWidget(folder);
    folder->hide();
}

void SearchBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), searchBarColor(palette()));
    painter.setPen(separatorColor(palette()));
    painter.drawLine(rect().bottomLeft(), rect().bottomRight());
}

} // namespace kavendra
