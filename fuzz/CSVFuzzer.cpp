#include "base/TextDecoding.h"
#include "data/csv/CSVReader.h"
#include "fuzz/Require.h"
#include "search/SearchIndex.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace {

using namespace kavendra;

/// Requires that each of the first items is found by the text of each of its columns.
void searchForOwnText(const ItemList& items) {
    const SearchIndex index = *makeSearchIndex(items);
    require(index.matches(" ").size() == items.size());
    for (std::size_t item = 0; item < std::min<std::size_t>(items.size(), 8); ++item)
        for (std::size_t column = 0; column < requiredColumns.size(); ++column) {
            const auto found =
                index.matches(items.value(item, static_cast<ItemColumn>(column)).substr(0, 64));
            require(std::ranges::is_sorted(found));
            if (items.value(item, static_cast<ItemColumn>(column)).size() <= 64)
                require(std::ranges::binary_search(found, item));
        }
}

} // namespace

/// Text of any encoding is decoded to valid UTF-8, and its items can be searched.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    std::optional<ByteBuffer> text = decodeText(ByteBuffer(bytes));
    if (!text)
        return 0;
    require(isValidUTF8(text->view()));
    auto block = readCSVItems(std::move(*text), "fuzzed.csv", "fuzzed.csv").items;
    if (!block)
        return 0;
    ItemList items;
    items.append(std::move(*block));
    searchForOwnText(items);
    return 0;
}
