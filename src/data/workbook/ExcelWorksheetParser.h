#pragma once

#include "data/workbook/ExcelSheetTable.h"
#include "data/workbook/XMLPart.h"

#include <string>

namespace kavendra {

/// Returns the number of a cell reference's column, 1 for A: B7 and b7 are 2, AA1 is 27. A reference that
/// does not begin with a letter gives 0, one beyond the last column of a sheet any number beyond it.
int columnIndex(std::string_view cellReference);

/// The cells of a worksheet (ECMA-376, part 1, 18.3). Rows count as they come: their numbers are not used.
class ExcelWorksheetParser final : public XMLHandler {
public:
    /// The rows go to `table`, with the texts of `content`.
    ExcelWorksheetParser(WorkbookContent& content, ExcelSheetTable& table) : content(content), table(table) {}

    void startElement(const char* name, XMLAttributes attributes) override;
    void characterData(std::string_view text) override;
    void endElement(const char* name) override;

private:
    enum class CellType { sharedString, inlineString, other };

    void startCell(XMLAttributes attributes);
    void endCell();
    TextSpan sharedString() const;

    WorkbookContent& content;
    ExcelSheetTable& table;
    int currentColumnIndex = 0;
    CellType currentCellType = CellType::other;
    std::string currentCellValue;
    bool isCapturingValue = false;
    bool isWanted = false; ///< whether the cell's column can matter
};

} // namespace kavendra
