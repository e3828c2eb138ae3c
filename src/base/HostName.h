#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// Returns an internationalised host name in its ASCII form, "xn--wgv71a.jp" for "日本.jp" (UTS #46,
/// non-transitional, as browsers do). ASCII that other characters stand for is in the result: a full-width
/// solidus becomes "/". Returns nothing when the name has no such form or is longer than any host name.
std::optional<std::string> asciiHostName(std::string_view name);

} // namespace kavendra
