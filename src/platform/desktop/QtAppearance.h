#pragma once

#include "platform/Desktop.h"

namespace kavendra {

/// Gives the application and all its windows the palette of an appearance: the desktop's own for `system`,
/// one of ours for `light` and `dark`. Does nothing while there is no QGuiApplication.
void applyAppearance(Appearance appearance);

} // namespace kavendra
