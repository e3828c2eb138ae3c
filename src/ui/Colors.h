#pragma once

#include <QColor>
#include <QPalette>

/// Colours that a palette does not name, derived from it so that they follow the appearance.
namespace kavendra {

bool isDark(const QPalette& palette);

/// The search bar stands out a little from the controls: lighter in the dark, darker in the light.
QColor searchBarColor(const QPalette& palette);

/// What the search field's text stands on; in the dark the bar shines through.
QColor searchFieldColor(const QPalette& palette);

QColor separatorColor(const QPalette& palette);

/// Returns the palette of a menu, which stands out from what it covers. In the dark its ground and its
/// outline are lighter than the window's, and disabled text has no edge.
QPalette menuPalette(const QPalette& palette);

/// For text that is there to be looked up, not read first.
QColor secondaryTextColor(const QPalette& palette);

} // namespace kavendra
