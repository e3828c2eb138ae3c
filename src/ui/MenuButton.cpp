#include "ui/MenuButton.h"

#include "ui/MenuBuilder.h"
#include "ui/Theme.h"

#include <QEvent>
#include <QMenu>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace kavendra {

namespace {

constexpr int iconSide = 18;

} // namespace

MenuButton::MenuButton(QString icon, QWidget* parent) : QToolButton(parent), iconName(std::move(icon)) {
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

// Without the arrow that styles draw on a button that has a menu.
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
    setIcon(tintedIcon(iconName, secondaryTextColor(palette())));
}

} // namespace kavendra
