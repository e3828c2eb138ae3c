#include "launch/Params.h"

#include "base/Text.h"
#include "launch/LaunchErrors.h"

#include <utility>

namespace kavendra {

Result<std::vector<std::string>> splitParams(std::string_view params) {
    std::vector<std::string> tokens;
    std::string token;
    const auto endToken = [&] {
        if (!token.empty())
            tokens.push_back(std::exchange(token, {}));
    };

    char openQuote = 0; // 0 outside quotes
    while (!params.empty()) {
        if (const std::size_t space = openQuote ? 0 : whiteSpacePrefix(params)) {
            endToken();
            params.remove_prefix(space);
            continue;
        }
        const char next = params.front();
        params.remove_prefix(1);
        if (openQuote ? next == openQuote : next == '"' || next == '\'')
            openQuote = openQuote ? 0 : next;
        else
            token += next;
    }
    if (openQuote)
        return LaunchError::unterminatedQuote();
    endToken();
    return tokens;
}

} // namespace kavendra
