#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// A text read as a URL (RFC 3986, RFC 3987).
struct ParsedURL {
    std::string scheme;  ///< in lower case; empty for a relative reference
    std::string encoded; ///< ASCII: percent-encoded where the text was not, the host in punycode
};

/// Reads a text as a URL the way an address bar does: spaces and other characters that a URL may not hold
/// are encoded. Returns nothing when it cannot be read as one, or when it is not UTF-8.
std::optional<ParsedURL> parseURL(std::string_view text);

} // namespace kavendra
