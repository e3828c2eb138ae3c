#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// Returns `text` as an encoded URL when it is a web address: a URL with a host and the scheme "http" or
/// "https", in any letter case.
std::optional<std::string> webAddressOf(std::string_view text);

} // namespace kavendra
