#include "data/DataFile.h"

#include "data/DataErrors.h"
#include "platform/Paths.h"

#include <utility>

namespace kavendra {

std::optional<DataFileKind> dataFileKind(std::string_view fileName) {
    const std::string extension = lowercasedExtension(fileName);
    if (extension == "csv")
        return DataFileKind::csv;
    if (extension == "xlsx" || extension == "xlsm")
        return DataFileKind::workbook;
    return std::nullopt;
}

DataFile dataFileAt(std::string path) {
    std::string name(lastPathComponent(path));
    const DataFileKind kind = dataFileKind(name).value_or(DataFileKind::csv);
    return {.path = std::move(path), .name = std::move(name), .kind = kind};
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
