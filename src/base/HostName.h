#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// Returns the ASCII form of an internationalised host name: "xn--wgv71a.jp" for "日本.jp" (UTS #46,
/// non-transitional, as in browsers). Compatibility characters are mapped to ASCII, a full-width solidus to
/// "/". Returns nothing if the name has no ASCII form or is longer than any host name.
std::optional<std::string> asciiHostName(std::string_view name);

} // namespace kavendra
