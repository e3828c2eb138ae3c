#pragma once

#include "app/Menu.h"

#include <QPoint>

class QMenu;
class QWidget;

namespace kavendra {

/// Replaces the contents of a menu by these entries, translated. A chosen action runs from the event loop,
/// when the menu has closed, because it may take long; it does not run if `owner` has been destroyed.
void fillMenu(QMenu& menu, const Menu& entries, QWidget& owner);

/// Opens a new menu at a position on the screen and returns at once. The menu is destroyed when it closes.
void showMenu(const Menu& entries, QWidget& owner, const QPoint& globalPosition);

} // namespace kavendra
