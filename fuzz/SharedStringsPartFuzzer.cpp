#include "base/TextDecoding.h"
#include "data/workbook/ExcelPackageParsers.h"
#include "fuzz/Require.h"
#include "fuzz/XMLPartFuzzing.h"

using namespace kavendra;

/// In whatever pieces the part comes, the strings are the same, and valid.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    WorkbookContent contents[2];
    bool isWhole[2];
    for (int way = 0; way < 2; ++way) {
        ExcelSharedStringsParser parser(contents[way]);
        isWhole[way] = parsePieces(bytes, pieceLengths[way], parser);
    }
    require(isWhole[0] == isWhole[1] && contents[0].sharedStrings.size() == contents[1].sharedStrings.size());
    for (std::size_t index = 0; index < contents[0].sharedStrings.size(); ++index) {
        const std::string_view text = contents[0].value(contents[0].sharedStrings[index]);
        require(text == contents[1].value(contents[1].sharedStrings[index]) && isValidUTF8(text));
    }
    return 0;
}
