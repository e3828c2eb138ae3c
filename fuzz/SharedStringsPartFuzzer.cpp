#include "base/TextDecoding.h"
#include "data/workbook/ExcelPackageParsers.h"
#include "fuzz/XMLPartFuzzing.h"

using namespace kavendra;

/// The length of the pieces does not change the strings, and the strings are valid UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    WorkbookContent contents[2];
    ExcelSharedStringsParser longPieces(contents[0]), shortPieces(contents[1]);
    parseInLongAndShortPieces(bytes, longPieces, shortPieces);
    require(contents[0].sharedStrings.size() == contents[1].sharedStrings.size());
    for (std::size_t index = 0; index < contents[0].sharedStrings.size(); ++index) {
        const std::string_view text = contents[0].value(contents[0].sharedStrings[index]);
        require(text == contents[1].value(contents[1].sharedStrings[index]) && isValidUTF8(text));
    }
    return 0;
}
