#include "fuzz/Require.h"
#include "launch/WebAddress.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

using namespace kavendra;

namespace {

bool isASCII(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

/// Decodes percent-encoding; keeps a "%" that is not followed by two hexadecimal digits.
std::string decoded(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string bytes;
    while (!text.empty()) {
        std::size_t value = 0, length = 1;
        for (; length < std::min<std::size_t>(text.size(), 3) && text[0] == '%'; ++length) {
            const std::size_t digit =
                digits.find(static_cast<char>(text[length] >= 'A' ? text[length] | 0x20 : text[length]));
            if (digit == std::string_view::npos)
                break;
            value = value * 16 + digit;
        }
        bytes += length == 3 ? static_cast<char>(value) : text[0];
        text.remove_prefix(length == 3 ? 3 : 1);
    }
    return bytes;
}

} // namespace

/// The URL of a web address contains only characters that URLs allow and is the web address of itself.
/// Decoded, it equals the decoded input, unless the host is not ASCII.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto url = webAddressOf(text);
    if (!url)
        return 0;
    require(std::ranges::all_of(*url, [](char byte) {
        return byte > ' ' && byte < 0x7F && !std::string_view("\"<>\\^`{|}").contains(byte);
    }));
    require(webAddressOf(*url) == url);
    const std::size_t authorityEnd = std::min(text.find_first_of("/?#", text.find(':') + 3), text.size());
    if (isASCII(text.substr(0, authorityEnd)))
        require(decoded(*url) == decoded(text));
    return 0;
}
