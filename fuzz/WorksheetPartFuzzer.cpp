#include "base/TextDecoding.h"
#include "data/workbook/ExcelWorksheetParser.h"
#include "fuzz/Require.h"
#include "fuzz/XMLPartFuzzing.h"

using namespace kavendra;

/// In whatever pieces the part comes, the header and the items are the same, and valid.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    WorkbookContent contents[2];
    std::optional<std::string> headers[2];
    bool isWhole[2];
    for (int way = 0; way < 2; ++way) {
        WorkbookContent& content = contents[way];
        for (const std::string_view text : {"Title", "Command", "Params", "Keywords", "x"})
            content.sharedStrings.push_back(content.appendTrimmed(text));
        ExcelSheetTable table(content);
        ExcelWorksheetParser parser(content, table);
        isWhole[way] = parsePieces(bytes, pieceLengths[way], parser);
        headers[way] = table.headerLine();
    }
    require(isWhole[0] == isWhole[1] && headers[0] == headers[1]);
    require(contents[0].items.size() == contents[1].items.size());
    for (std::size_t item = 0; item < contents[0].items.size(); ++item)
        for (std::size_t column = 0; column < requiredColumns.size(); ++column) {
            const std::string_view text = contents[0].value(contents[0].items[item][column]);
            require(text == contents[1].value(contents[1].items[item][column]) && isValidUTF8(text));
        }
    return 0;
}
