#include "data/workbook/ExcelPackageParsers.h"
#include "fuzz/XMLPartFuzzing.h"

#include <algorithm>
#include <tuple>

using namespace kavendra;

/// The length of the pieces does not change the sheets.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    ExcelWorkbookParser parsers[2];
    parseInLongAndShortPieces(bytes, parsers[0], parsers[1]);
    const auto sheet = [](const auto& each) { return std::tie(each.name, each.relationshipID); };
    require(std::ranges::equal(parsers[0].sheets, parsers[1].sheets, {}, sheet, sheet));
    return 0;
}
