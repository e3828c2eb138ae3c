#include "base/Text.h"
#include "base/TextDecoding.h"
#include "data/csv/CSVReader.h"
#include "fuzz/Require.h"
#include "search/SearchIndex.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

using namespace kavendra;

namespace {

std::string foldedPlainly(std::string_view text) {
    return normalized(lowercased(normalized(text)));
}

/// Returns whether the item's texts contain every word of the query, or its Katakana spelling.
bool isKept(const ItemList& items, std::size_t item, std::string_view query) {
    std::string joined(items.value(item, ItemColumn::title));
    for (std::size_t column = 1; column < requiredColumns.size(); ++column)
        joined.append(" ").append(items.value(item, static_cast<ItemColumn>(column)));
    const std::string searched = foldedPlainly(joined);
    const std::string words = foldedPlainly(query);
    return std::ranges::all_of(splitWords(words), [&](std::string_view word) {
        return searched.contains(word) || searched.contains(normalized(hiraganaToKatakana(word)));
    });
}

} // namespace

/// The first line is the query, the lines behind it are the rows of a CSV file: the index keeps exactly the
/// items that the rule of matching keeps.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string_view query = bytes.substr(0, bytes.find('\n'));
    const std::string csv = "Title,Command,Params,Keywords" + std::string(bytes.substr(query.size()));
    if (!isValidUTF8(csv))
        return 0;
    auto block = readCSVItems(ByteBuffer(csv), "fuzzed.csv", "fuzzed.csv").items;
    if (!block)
        return 0;
    ItemList items;
    items.append(std::move(*block));
    const auto found = makeSearchIndex(items).value().matches(query);
    require(std::ranges::is_sorted(found));
    for (std::size_t item = 0; item < items.size(); ++item)
        require(std::ranges::binary_search(found, item) == isKept(items, item, query));
    return 0;
}
