#include "data/workbook/ExcelPackageParsers.h"
#include "fuzz/Require.h"
#include "fuzz/XMLPartFuzzing.h"

using namespace kavendra;

/// In whatever pieces the part comes, the relationships are the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    ExcelWorkbookRelationshipsParser parsers[2];
    bool isWhole[2];
    for (int way = 0; way < 2; ++way)
        isWhole[way] = parsePieces(bytes, pieceLengths[way], parsers[way]);
    require(isWhole[0] == isWhole[1]);
    require(parsers[0].worksheetPathsByRelationshipID == parsers[1].worksheetPathsByRelationshipID);
    return 0;
}
