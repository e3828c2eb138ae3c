#pragma once

#include <cstddef>
#include <string>

namespace kavendra {

/// The form in which different programs write the texts of a workbook.
enum class WorkbookForm {
    spreadsheetProgram, ///< a string table; cells and rows have the attributes that Excel writes
    inlineStrings,      ///< as openpyxl writes them
    byHand,             ///< a string table and no optional attributes
};

/// Returns a workbook (the bytes of its file) with a header and the rows of generateCSV.
std::string generateWorkbook(std::size_t rows, WorkbookForm form);

} // namespace kavendra
