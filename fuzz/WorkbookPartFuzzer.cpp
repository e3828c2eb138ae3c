#include "data/workbook/ExcelPackageParsers.h"
#include "fuzz/Require.h"
#include "fuzz/XMLPartFuzzing.h"

using namespace kavendra;

/// In whatever pieces the part comes, the sheets are the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    ExcelWorkbookParser parsers[2];
    bool isWhole[2];
    for (int way = 0; way < 2; ++way)
        isWhole[way] = parsePieces(bytes, pieceLengths[way], parsers[way]);
    require(isWhole[0] == isWhole[1] && parsers[0].sheets.size() == parsers[1].sheets.size());
    for (std::size_t sheet = 0; sheet < parsers[0].sheets.size(); ++sheet)
        require(parsers[0].sheets[sheet].name == parsers[1].sheets[sheet].name &&
                parsers[0].sheets[sheet].relationshipID == parsers[1].sheets[sheet].relationshipID);
    return 0;
}
