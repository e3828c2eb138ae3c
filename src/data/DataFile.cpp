#include "data/DataFile.h"

#include "data/DataErrors.h"
#include "platform/Paths.h"

namespace kavendra {

std::optional<DataFileKind> dataFileKind(std::string_view fileName) {
    const std::string extension = lowercasedExtension(fileName);
    if (extension == "csv")
        return DataFileKind::csv;
    if (extension == "xlsx" || extension == "xlsm")
        return DataFileKind::workbook;
    return std::nullopt;
}

std::unexpected<Error> invalidDataFile(std::string_view fileName, std::string_view detail) {
    const std::string text = std::string(fileName).append(": ").append(detail);
    return dataFileKind(fileName) == DataFileKind::workbook ? LaunchError::invalidExcelFormat(text)
                                                            : LaunchError::invalidCSVFormat(text);
}

std::unexpected<Error> notEnoughMemory(std::string_view fileName) {
    return std::unexpected(Error{std::string("not enough memory: ").append(fileName)});
}

} // namespace kavendra
