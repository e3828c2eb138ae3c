#include "app/DataDirectory.h"

#include "base/Text.h"
#include "base/TextDecoding.h"
#include "data/DataErrors.h"
#include "data/csv/CSVReader.h"
#include "data/workbook/WorkbookReader.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <algorithm>
#include <utility>

namespace kavendra {

namespace {

bool isWorkbookName(std::string_view name) {
    const std::string extension = lowercasedExtension(name);
    return extension == "xlsx" || extension == "xlsm";
}

bool isDataFileName(std::string_view name) {
    const bool known = isWorkbookName(name) || lowercasedExtension(name) == "csv";
    return known && !name.starts_with(ignorePrefix);
}

} // namespace

Result<void> ensureDataDirectory(const std::string& path) {
    return exists(path) ? Result<void>{} : createDirectories(path);
}

Result<std::vector<std::string>> listDataFiles(const std::string& path) {
    if (!isDirectory(path))
        return LaunchError::dataDirectoryNotFound(path);
    auto names = listDirectory(path);
    if (!names)
        return std::unexpected(names.error());
    std::erase_if(*names, [](const std::string& name) { return !isDataFileName(name); });
    std::ranges::sort(*names, localizedLess);
    for (std::string& name : *names)
        name = joinedPath(path, name);
    return names;
}

Result<ItemList> loadAllItems(const std::string& path, bool includeBuiltin, const std::string& builtinFile,
                              const LogLine& appendLogLine) {
    const auto files = listDataFiles(path);
    if (!files)
        return std::unexpected(files.error());
    ItemList items;
    if (includeBuiltin) {
        auto builtin = loadBuiltinItems(builtinFile, appendLogLine);
        if (!builtin)
            return std::unexpected(builtin.error());
        items.append(std::move(*builtin));
    }
    for (const std::string& file : *files) {
        auto block = loadDataFile(file, std::string(lastPathComponent(file)), appendLogLine);
        if (!block)
            return std::unexpected(block.error());
        items.append(std::move(*block));
    }
    return items;
}

Result<ItemBlock> loadBuiltinItems(const std::string& builtinFile, const LogLine& appendLogLine) {
    if (!exists(builtinFile))
        return ItemBlock{};
    return loadDataFile(builtinFile, std::string(builtinSource), appendLogLine);
}

Result<ItemBlock> loadDataFile(const std::string& file, std::string sourceName,
                               const LogLine& appendLogLine) {
    const std::string_view name = lastPathComponent(file);
    if (isWorkbookName(name))
        return readWorkbookItems(file, std::move(sourceName), appendLogLine);
    auto text = readCSVText(file);
    if (!text)
        return std::unexpected(text.error());
    return readCSVItems(std::move(*text), name, std::move(sourceName), appendLogLine);
}

Result<ByteBuffer> readCSVText(const std::string& file) {
    const auto failure = [&file](std::string_view what) {
        return LaunchError::invalidCSVFormat(std::string(lastPathComponent(file)).append(what));
    };
    auto bytes = readFile(file, maximumDataFileSize);
    if (!bytes)
        return failure(": failed to read file");
    auto text = decodeText(std::move(*bytes));
    if (!text)
        return failure(": failed to decode text");
    return std::move(*text);
}

} // namespace kavendra
