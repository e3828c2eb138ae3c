#pragma once

#include "platform/Desktop.h"

class QPalette;

namespace kavendra {

/// Returns the program's own palette for `light` or `dark`. For `system` it is empty: all colours come from
/// the desktop and follow its changes.
QPalette paletteOf(Appearance appearance, bool highContrast);

} // namespace kavendra
