#include "base/TextDecoding.h"
#include "data/workbook/ExcelWorksheetParser.h"
#include "fuzz/XMLPartFuzzing.h"

using namespace kavendra;

namespace {

/// A worksheet parser with what it writes to.
struct Worksheet {
    Worksheet() {
        for (const std::string_view text : {"Title", "Command", "Params", "Keywords", "x"})
            content.sharedStrings.push_back(content.appendTrimmed(text));
    }

    WorkbookContent content;
    ExcelSheetTable table{content};
    ExcelWorksheetParser parser{content, table};
};

} // namespace

/// The length of the pieces does not change the header and the items, and the items are valid UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Worksheet sheets[2];
    parseInLongAndShortPieces(bytes, sheets[0].parser, sheets[1].parser);
    require(sheets[0].table.headerLine() == sheets[1].table.headerLine());
    const WorkbookContent& content = sheets[0].content;
    const WorkbookContent& other = sheets[1].content;
    require(content.items.size() == other.items.size());
    for (std::size_t item = 0; item < content.items.size(); ++item)
        for (std::size_t column = 0; column < requiredColumns.size(); ++column) {
            const std::string_view text = content.value(content.items[item][column]);
            require(text == other.value(other.items[item][column]) && isValidUTF8(text));
        }
    return 0;
}
