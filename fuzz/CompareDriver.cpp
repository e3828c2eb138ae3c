#include "config/SettingsFile.h"
#include "config/StateFile.h"
#include "data/csv/CSVReader.h"
#include "data/workbook/WorkbookReader.h"
#include "fuzz/ScratchDirectory.h"
#include "launch/Params.h"
#include "search/SearchIndex.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <iostream>
#include <utility>
#include <vector>

/// Reads cases from standard input, one JSON object a line, and writes the result of each as one line of
/// JSON. tools/compare-readers compares the results with those of its own readers.
namespace {

using namespace kavendra;
using nlohmann::json;

json failure(const Error& error) {
    return {{"error", error.description}};
}

json itemsOf(const Result<ItemBlock>& block) {
    if (!block)
        return failure(block.error());
    json items = json::array();
    for (const ItemRow& row : block->rows) {
        json& item = items.emplace_back(json::array());
        for (std::size_t column = 0; column < row.size(); ++column)
            item.push_back(block->value(row, column));
    }
    return items;
}

Result<ItemBlock> csvItems(const json& text) {
    return readCSVItems(ByteBuffer(text.get<std::string>()), "rows.csv", "rows.csv").items;
}

/// Returns the matches of a query that is typed character by character.
std::vector<std::uint32_t> typed(const SearchIndex& index, const std::string& query) {
    std::string text;
    std::vector<std::uint32_t> found = index.matches(text);
    for (std::size_t end = 1; end <= query.size(); ++end) {
        const bool isInCharacter = end < query.size() && (query[end] & 0xC0) == 0x80;
        if (isInCharacter)
            continue;
        std::string next = query.substr(0, end);
        found = index.matches(next, {.searchText = text, .found = found});
        text = std::move(next);
    }
    return found;
}

json matchesOf(const json& csv, const json& queries) {
    auto block = csvItems(csv);
    if (!block)
        return failure(block.error());
    ItemList items;
    items.append(std::move(*block));
    constexpr std::size_t partSize = 7; // several parts even for a short list
    const auto index = makeSearchIndex(items, partSize);
    if (!index)
        return failure(index.error());
    json found = json::array();
    for (const json& query : queries)
        found.push_back(typed(*index, query.get<std::string>()));
    return found;
}

json tokensOf(const std::string& params) {
    const auto tokens = splitParams(params);
    return tokens ? json(*tokens) : failure(tokens.error());
}

/// Returns the content of the file after loading it from `text` and writing it.
json rewritten(const json& text, const std::string& file, const auto& load, const auto& write) {
    static const ScratchDirectory scratch;
    const std::string path = scratch.path + "/" + file;
    writeBytes(path, text.get<std::string>());
    const auto loaded = load(scratch.path);
    if (!loaded)
        return {{"error", "invalid"}};
    const Result<void> written = write(scratch.path, *loaded);
    return written ? json(readBytes(path)) : failure(written.error());
}

json answer(const json& question) {
    const std::string kind = question.at("kind");
    if (kind == "csv")
        return itemsOf(csvItems(question.at("text")));
    if (kind == "workbook")
        return itemsOf(readWorkbookItems(dataFileAt(question.at("path")), "workbook").items);
    if (kind == "query")
        return matchesOf(question.at("csv"), question.at("queries"));
    if (kind == "params")
        return tokensOf(question.at("text"));
    if (kind == "settings")
        return rewritten(question.at("text"), settingsFilePath(""), loadSettings, writeSettings);
    if (kind == "state")
        return rewritten(question.at("text"), stateFilePath(""), loadState, writeState);
    return {{"error", "unknown kind"}};
}

} // namespace

int main() {
    for (std::string line; std::getline(std::cin, line);)
        std::cout << answer(json::parse(line)).dump() << '\n';
    return std::cout.flush() ? 0 : 1;
}
