#pragma once

#include "platform/Desktop.h"

#include <string>

class QPalette;

/// What Qt does for every desktop. Without a QGuiApplication, nothing is set.
namespace kavendra {

/// Sets the palette of the application and all its windows: the desktop's own for `system`, one of ours for
/// `light` and `dark`.
void applyAppearance(Appearance appearance, bool highContrast = false);

/// Sets the palette that the user prefers on the desktop: the desktop's own if it is as dark or light as
/// preferred, or if there is no preference, else one of ours. With `highContrast` it is always one of ours.
void applyPreference(Appearance preferred, bool highContrast);

/// Returns which appearance applyPreference sets. `desktopPalette` is the current palette of the desktop,
/// which counts as its own unless it is that of Qt's style.
Appearance chosenAppearance(Appearance preferred, bool highContrast, const QPalette& desktopPalette,
                            bool isDesktopsOwn);

/// Puts plain text on the clipboard; other programs can paste it while this one runs.
void putOnClipboard(const std::string& text);

/// Returns the text of a clipboard. Waits for the program that owns it.
std::string clipboardText(Clipboard clipboard);

/// Whether reading a clipboard waits for another program, on an X server, so that it is not to be done on the
/// window's thread. Qt waits up to 15 s.
bool isForeignX11Clipboard(Clipboard clipboard);

} // namespace kavendra
