#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// Returns `text` as a URL for a browser when it is a web address: the scheme "http" or "https", in any
/// letter case, ":", and, behind a "//", an authority that can be one (RFC 3986, section 3.2: a host without
/// spaces and delimiters or an address in brackets, a port of digits). Whether the host exists, the port is
/// in range or a part is missing is left to the browser.
///
/// The URL is the text as typed, but that bytes a URL may not hold are percent-encoded, also a "%" that no
/// two hexadecimal digits follow, and a host that is not ASCII is in its ASCII form (see asciiHostName).
std::optional<std::string> webAddressOf(std::string_view text);

} // namespace kavendra
