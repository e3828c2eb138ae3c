#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPalette>

/// Colours, fonts and icons derived from the palette and the system font, so that they follow their changes.
namespace kavendra {

/// Whether the palette has light text on a dark background.
bool isDark(const QPalette& palette);

/// Background of the search bar: a little lighter than the controls in a dark palette, darker in a light one.
QColor searchBarColor(const QPalette& palette);

/// Background of the search field: the palette's text background, in a dark palette mixed with the search
/// bar.
QColor searchFieldColor(const QPalette& palette);

/// Lines between and around parts of the window.
QColor separatorColor(const QPalette& palette);

/// Text and icons of less importance, such as the status line and the column titles.
QColor secondaryTextColor(const QPalette& palette);

/// Background of the selected row: the accent colour, deeper while the table has the keyboard. Changed so far
/// that the text on it (HighlightedText) has a contrast of at least 4.5 to 1 (WCAG 2.1, level AA).
QColor selectedRowColor(const QPalette& palette, QPalette::ColorGroup group, bool hasKeyboard);

/// Returns the palette of a menu. A dark one has a lighter background and outline than the window, so that
/// the menu stands out from it, and no edge around disabled text.
QPalette menuPalette(const QPalette& palette);

/// Returns the system font, `steps` points smaller.
QFont smallerFont(int steps);

/// Returns the program's own icon.
QIcon applicationIcon();

/// Returns the icon of a warning, in its own colours.
QIcon warningIcon();

/// Returns the icon resources/icons/`name`.svg with "currentColor" replaced by an opaque colour. It is drawn
/// anew for every size and scale.
QIcon tintedIcon(const QString& name, const QColor& color);

} // namespace kavendra
