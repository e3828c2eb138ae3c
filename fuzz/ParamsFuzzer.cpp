#include "fuzz/Require.h"
#include "launch/Params.h"

#include <cstdint>
#include <string>
#include <string_view>

using namespace kavendra;

namespace {

/// Returns whether the text ends inside quotes.
bool hasOpenQuote(std::string_view text) {
    while (true) {
        const std::size_t opening = text.find_first_of("\"'");
        if (opening == std::string_view::npos)
            return false;
        const std::size_t closing = text.find(text[opening], opening + 1);
        if (closing == std::string_view::npos)
            return true;
        text.remove_prefix(closing + 1);
    }
}

/// Returns params that are split into `tokens`: each token in quotes, a double quote in single quotes.
std::string quoted(const std::vector<std::string>& tokens) {
    std::string params;
    for (const std::string& token : tokens) {
        params += ' ';
        for (std::size_t begin = 0, end = 0; begin < token.size(); begin = end) {
            const char quote = token[begin] == '"' ? '\'' : '"';
            end = std::min(token.find(quote, begin), token.size());
            params += quote + token.substr(begin, end - begin) + quote;
        }
    }
    return params;
}

} // namespace

/// splitParams fails if and only if a quote is not closed. Tokens are not empty, and splitting the quoted
/// tokens gives the same tokens.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view params(reinterpret_cast<const char*>(data), size);
    const auto tokens = splitParams(params);
    require(tokens.has_value() == !hasOpenQuote(params));
    if (!tokens) {
        require(tokens.error().description == "Params contains an unterminated quote");
        return 0;
    }
    std::size_t length = 0;
    for (const std::string& token : *tokens) {
        require(!token.empty());
        length += token.size();
    }
    require(length <= params.size());
    require(splitParams(quoted(*tokens)) == *tokens);
    require(splitParams("\u3000" + std::string(params) + "\n''") == *tokens);
    return 0;
}
