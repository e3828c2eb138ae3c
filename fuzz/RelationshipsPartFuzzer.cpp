#include "data/workbook/ExcelPackageParsers.h"
#include "fuzz/XMLPartFuzzing.h"

using namespace kavendra;

/// The length of the pieces does not change the relationships.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    ExcelWorkbookRelationshipsParser parsers[2];
    parseInLongAndShortPieces(bytes, parsers[0], parsers[1]);
    require(parsers[0].worksheetPathsByRelationshipID == parsers[1].worksheetPathsByRelationshipID);
    return 0;
}
