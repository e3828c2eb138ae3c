#pragma once

#include "app/Menu.h"

#include <QPoint>

class QMenu;
class QWidget;

namespace kavendra {

/// Puts the entries in the place of what a menu holds, in the person's language. A chosen action runs once
/// the menu is gone from the screen, because it may take its time, provided that `owner` is still there.
void fillMenu(QMenu& menu, const Menu& entries, QWidget& owner);

/// Opens a menu of its own, which goes with `owner` at the latest, at a point of the screen. Returns at once.
void showMenu(const Menu& entries, QWidget& owner, const QPoint& globalPosition);

} // namespace kavendra
