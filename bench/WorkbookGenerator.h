#pragma once

#include <cstddef>
#include <string>

namespace kavendra {

/// Who writes a workbook, and so in which form its texts stand.
enum class WorkbookForm {
    spreadsheetProgram, ///< a string table, and cells and rows with the attributes that Excel writes
    inlineStrings,      ///< as openpyxl writes it
    byHand,             ///< a string table, and only what is needed
};

/// Returns a workbook (the bytes of its file) with the rows of generateCSV below a header.
std::string generateWorkbook(std::size_t rows, WorkbookForm form);

} // namespace kavendra
