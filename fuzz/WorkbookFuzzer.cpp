#include "base/TextDecoding.h"
#include "data/workbook/WorkbookReader.h"
#include "fuzz/Require.h"

#include <cstdint>
#include <string_view>

using namespace kavendra;

/// A workbook gives items of valid UTF-8 within the block's text, none of them blank, or a known error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto [logLines, block] = readWorkbookBytes(bytes, "fuzzed.xlsx", "fuzzed.xlsx");
    for (const std::string& line : logLines)
        require(isValidUTF8(line));
    if (!block) {
        require(block.error().description.starts_with("Invalid Excel format: fuzzed.xlsx: ") ||
                block.error().description == "Excel workbook has no supported sheet: fuzzed.xlsx");
        return 0;
    }
    for (const ItemRow& row : block->rows) {
        std::size_t length = 0;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const TextSpan span = row[column];
            require(span.offset <= block->text.size() && span.length <= block->text.size() - span.offset);
            require(isValidUTF8(block->value(row, column)));
            length += span.length;
        }
        require(length > 0);
    }
    return 0;
}
