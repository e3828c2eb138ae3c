#pragma once

#include "platform/Desktop.h"

#include <string>

/// What Qt does for every desktop. Both functions do nothing while there is no QGuiApplication.
namespace kavendra {

/// Sets the palette of the application and all its windows: the desktop's own for `system`, one of ours for
/// `light` and `dark`.
void applyAppearance(Appearance appearance);

/// Puts plain text on the clipboard; other programs can paste it while this one runs.
void putOnClipboard(const std::string& text);

} // namespace kavendra
