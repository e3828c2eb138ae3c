#pragma once

#include <string>

namespace kavendra {

/// Puts plain text on the clipboard, for other programs to paste while this one runs. Does nothing while
/// there is no QGuiApplication.
void putOnClipboard(const std::string& text);

} // namespace kavendra
