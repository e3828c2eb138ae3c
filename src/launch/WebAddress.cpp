#include "launch/WebAddress.h"

#include "base/HostName.h"
#include "base/TextDecoding.h"

#include <algorithm>
#include <array>

namespace kavendra {

namespace {

bool isASCII(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isHexDigit(char byte) {
    const char lower = static_cast<char>(byte | 0x20);
    return isDigit(byte) || (lower >= 'a' && lower <= 'f');
}

/// Whether the byte must be percent-encoded everywhere in a URL (RFC 3986, section 2).
bool mustBeEncoded(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value <= ' ' || value >= 0x7F || std::string_view("\"<>\\^`{|}").contains(byte);
}

/// Percent-encodes what must be, and each "%" that does not begin a percent-encoded byte.
std::string encoded(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string url;
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char byte = text[position];
        const bool isStrayPercent =
            byte == '%' && (position + 2 >= text.size() || !isHexDigit(text[position + 1]) ||
                            !isHexDigit(text[position + 2]));
        if (isStrayPercent || mustBeEncoded(byte)) {
            const auto value = static_cast<unsigned char>(byte);
            url.append({'%', digits[value >> 4], digits[value & 0xF]});
        } else {
            url += byte;
        }
    }
    return url;
}

bool isForbiddenInHost(char byte) {
    return isASCII({&byte, 1}) && (mustBeEncoded(byte) || std::string_view("/?#@:[]").contains(byte));
}

/// Returns the host in the form for a URL, nothing when it is not valid.
std::optional<std::string> hostOf(std::string_view host) {
    if (host.size() > 2 && host.starts_with('[') && host.ends_with(']')) {
        const std::string_view address = host.substr(1, host.size() - 2);
        const bool isAddress = isASCII(address) && std::ranges::none_of(address, [](char byte) {
                                   return byte != ':' && isForbiddenInHost(byte);
                               });
        return isAddress ? std::optional(encoded(host)) : std::nullopt;
    }
    std::string name(host);
    if (!isASCII(host))
        name = asciiHostName(host).value_or(name);
    return std::ranges::none_of(name, isForbiddenInHost) ? std::optional(encoded(name)) : std::nullopt;
}

/// Returns user, host and port in the form for a URL, nothing when they are not valid.
std::optional<std::string> authorityOf(std::string_view authority) {
    const std::size_t userEnd = authority.rfind('@') + 1; // 0 without a user
    const std::string_view user = authority.substr(0, userEnd);
    authority.remove_prefix(userEnd);

    // A colon inside brackets belongs to an IPv6 address.
    const std::size_t bracket = authority.rfind(']');
    const std::size_t hostEnd =
        std::min(authority.find(':', bracket == std::string_view::npos ? 0 : bracket), authority.size());
    const std::string_view port = authority.substr(hostEnd); // with its colon
    const auto host = hostOf(authority.substr(0, hostEnd));
    if (!host || !std::ranges::all_of(port.substr(port.empty() ? 0 : 1), isDigit))
        return std::nullopt;
    return encoded(user) + *host + std::string(port);
}

bool isWebScheme(std::string_view scheme) {
    return std::ranges::any_of(
        std::array<std::string_view, 2>{"http", "https"}, [scheme](std::string_view each) {
            return std::ranges::equal(scheme, each, {}, [](char byte) { return byte | 0x20; });
        });
}

} // namespace

std::optional<std::string> webAddressOf(std::string_view text) {
    const std::size_t schemeEnd = text.find(':');
    if (schemeEnd == std::string_view::npos || !isWebScheme(text.substr(0, schemeEnd)) || !isValidUTF8(text))
        return std::nullopt;
    const std::string_view rest = text.substr(schemeEnd + 1);
    if (!rest.starts_with("//"))
        return encoded(text);

    const std::size_t authorityEnd = std::min(rest.find_first_of("/?#", 2), rest.size());
    const auto authority = authorityOf(rest.substr(2, authorityEnd - 2));
    if (!authority)
        return std::nullopt;
    return std::string(text.substr(0, schemeEnd)) + "://" + *authority + encoded(rest.substr(authorityEnd));
}

} // namespace kavendra
