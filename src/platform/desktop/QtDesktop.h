#pragma once

#include "platform/Desktop.h"

#include <string>

/// What Qt does for every desktop. They do nothing while there is no QGuiApplication.
namespace kavendra {

/// Sets the palette of the application and all its windows: the desktop's own for `system`, one of ours for
/// `light` and `dark`.
void applyAppearance(Appearance appearance);

/// Puts plain text on the clipboard; other programs can paste it while this one runs.
void putOnClipboard(const std::string& text);

/// Returns the text of a clipboard. Waits for the program that owns it.
std::string clipboardText(Clipboard clipboard);

/// Whether reading a clipboard waits for another program, on an X server, so that it is not to be done on the
/// window's thread. Qt waits up to 15 s.
bool isForeignX11Clipboard(Clipboard clipboard);

} // namespace kavendra
