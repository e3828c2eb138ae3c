#include "base/TextDecoding.h"
#include "data/csv/CSVReader.h"
#include "fuzz/Require.h"
#include "search/SearchIndex.h"
#include "tests/support/PlainSearch.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace kavendra;

/// The first line is a query, the other lines are rows of a CSV file. SearchIndex, in parts of two items,
/// must find the same items as PlainSearch, also when the query's second half is typed after its first.
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
    const SearchIndex index = *makeSearchIndex(items, 2);
    const std::vector<std::uint32_t> expected = PlainSearch(items).matches(query);
    const std::string_view half = query.substr(0, query.size() / 2);
    require(index.matches(query) == expected);
    require(index.matches(query, {.searchText = half, .found = index.matches(half)}) == expected);
    return 0;
}
