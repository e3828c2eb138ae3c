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

    char openQuote = 0;
    while (!params.empty()) {
        const char next = params.front();
        const std::size_t space = openQuote ? 0 : whiteSpacePrefix(params);
        if (space > 0) {
            endToken();
            params.remove_prefix(space);
            continue;
        }
        params.remove_prefix(1);
        if (openQuote == next && openQuote)
            openQuote = 0;
        else if (!openQuote && (next == '"' || next == '\''))
            openQuote = next;
        else
            token += next;
    }
    if (openQuote)
        return LaunchError::unterminatedQuote();
    endToken();
    return tokens;
}

} // namespace kavendra
