#include "launch/WebAddress.h"

#include "platform/desktop/ParsedURL.h"

namespace kavendra {

std::optional<std::string> webAddressOf(std::string_view text) {
    std::optional<ParsedURL> url = parseURL(text);
    if (!url || (url->scheme != "http" && url->scheme != "https"))
        return std::nullopt;
    return std::move(url->encoded);
}

} // namespace kavendra
