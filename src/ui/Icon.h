#pragma once

#include <QColor>
#include <QIcon>

namespace kavendra {

/// Returns the icon of the program itself.
QIcon applicationIcon();

/// Returns one of the program's own icons in one opaque colour, crisp at every scale. `name` is the file's in
/// resources/icons, whose shapes are painted in "currentColor".
QIcon tintedIcon(const QString& name, const QColor& color);

} // namespace kavendra
