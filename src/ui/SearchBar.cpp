#include "ui/SearchBar.h"

#include "ui/MenuBuilder.h"
#include "ui/Theme.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace kavendra {

namespace {

constexpr int iconSide = 18;

} // namespace

MenuButton::MenuButton(QString iconName, QWidget* parent)
    : QToolButton(parent), m_iconName(std::move(iconName)) {
    setAutoRaise(true);
    setFixedSize(side, side);
    setIconSize({iconSide, iconSide});
    setFocusPolicy(Qt::TabFocus);
    setPopupMode(InstantPopup);
    auto* menu = new QMenu(this);
    setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { fillMenu(*menu, menuProvider(), *this); });
    tintIcon();
}

// Without HasMenu the style draws no arrow.
void MenuButton::paintEvent(QPaintEvent*) {
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.features &= ~QStyleOptionToolButton::HasMenu;
    QStylePainter(this).drawComplexControl(QStyle::CC_ToolButton, option);
}

void MenuButton::changeEvent(QEvent* event) {
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        tintIcon();
}

void MenuButton::tintIcon() {
    setIcon(tintedIcon(m_iconName, secondaryTextColor(palette())));
}

SearchBar::SearchBar(QWidget* parent)
    : QWidget(parent), m_searchField(new SearchField), m_folderButton(new MenuButton("folder")),
      m_settingsButton(new MenuButton("gear")) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 12, 16, 12);
    row->setSpacing(8);
    m_searchField->setMinimumHeight(MenuButton::side);
    row->addWidget(m_searchField, 1);
    row->addWidget(m_folderButton);
    row->addWidget(m_settingsButton);
    m_folderButton->hide();
}

void SearchBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), searchBarColor(palette()));
    painter.setPen(separatorColor(palette()));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace kavendra
