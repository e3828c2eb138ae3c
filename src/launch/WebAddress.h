#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// Returns the URL to open for a web address, nothing for other text. A web address is "http" or "https" in
/// any letter case, ":" and, after "//", a valid authority (RFC 3986, section 3.2): a host without spaces and
/// delimiters or an address in brackets, and a port of digits. The browser checks the rest, for example
/// whether the host exists or the port is in range.
///
/// The URL is the text unchanged, except that bytes which a URL must not contain are percent-encoded, a "%"
/// that is not followed by two hexadecimal digits is encoded, and a host that is not ASCII is replaced by its
/// ASCII form (see asciiHostName).
std::optional<std::string> webAddressOf(std::string_view text);

} // namespace kavendra
