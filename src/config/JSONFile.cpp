#include "config/JSONFile.h"

#include "platform/FileReplacement.h"
#include "platform/Files.h"

#include <nlohmann/json.hpp>

namespace kavendra {

using nlohmann::json;

std::optional<json> parseJSONObject(std::string_view bytes) {
    bool tooDeep = false;
    const auto limitDepth = [&tooDeep](int depth, json::parse_event_t, json&) {
        tooDeep = tooDeep || depth > maximumJSONDepth;
        return !tooDeep;
    };
    json parsed = json::parse(bytes, limitDepth, /*allow_exceptions=*/false);
    if (tooDeep || !parsed.is_object())
        return std::nullopt;
    return parsed;
}

std::optional<json> readJSONObject(const std::string& path) {
    const auto bytes = readFile(path, maximumJSONFileSize);
    return bytes ? parseJSONObject(bytes->view()) : std::nullopt;
}

Result<void> writeJSONObject(const std::string& path, const json& object) {
    std::string text;
    try {
        text = object.dump(2) + "\n";
    } catch (const json::exception&) {
        return std::unexpected(Error{path + ": Invalid or incomplete multibyte or wide character"});
    }
    return replaceFile(path, text);
}

} // namespace kavendra
