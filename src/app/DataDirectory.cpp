#include "app/DataDirectory.h"

#include "base/Text.h"
#include "base/TextDecoding.h"
#include "data/DataErrors.h"
#include "data/DataFile.h"
#include "data/LoadLimits.h"
#include "data/csv/CSVReader.h"
#include "data/workbook/WorkbookReader.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <algorithm>
#include <new>
#include <utility>

namespace kavendra {

namespace {

/// What the files of a load hold together, so far.
class LoadTotals {
public:
    /// Fails when the load goes beyond a limit with this file.
    Result<void> add(const ItemBlock& block, std::string_view name) {
        fileSize += block.fileSize;
        items += block.rows.size();
        memory += block.text.size() + block.rows.size() * loadLimits::itemCost;
        xmlCost += block.xmlCost;
        const auto beyond = [name](const std::string& what) {
            return invalidDataFile(name, what + " in all files together");
        };
        if (items > loadLimits::items)
            return beyond("more than " + std::to_string(loadLimits::items) + " rows");
        if (memory > loadLimits::itemMemory(fileSize))
            return beyond("too many rows or too much text");
        if (xmlCost > loadLimits::xmlCost(fileSize))
            return beyond("too much XML");
        return {};
    }

private:
    std::size_t fileSize = 0, items = 0, memory = 0, xmlCost = 0;
};

struct CSVFile {
    ByteBuffer text;
    std::size_t fileSize = 0;
};

Result<CSVFile> readCSVFile(const std::string& file) {
    const auto failure = [&file](std::string_view what) {
        return invalidDataFile(lastPathComponent(file), what);
    };
    auto bytes = readFile(file, maximumDataFileSize);
    if (!bytes)
        return failure("failed to read file");
    const std::size_t fileSize = bytes->size();
    auto text = decodeText(std::move(*bytes));
    if (!text)
        return failure("failed to decode text");
    return CSVFile{.text = std::move(*text), .fileSize = fileSize};
}

Result<ItemBlock> readDataFile(const std::string& file, std::string sourceName,
                               const LogLine& appendLogLine) {
    const std::string_view name = lastPathComponent(file);
    if (dataFileKind(name) == DataFileKind::workbook)
        return readWorkbookItems(file, std::move(sourceName), appendLogLine);
    auto csv = readCSVFile(file);
    if (!csv)
        return std::unexpected(csv.error());
    return readCSVItems(std::move(csv->text), name, std::move(sourceName), appendLogLine, csv->fileSize);
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
    std::erase_if(*names, [](const std::string& name) {
        return !dataFileKind(name) || name.starts_with(ignorePrefix);
    });
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
    LoadTotals totals;
    const auto append = [&](const std::string& file, Result<ItemBlock> block) -> Result<void> {
        if (!block)
            return std::unexpected(block.error());
        auto added = totals.add(*block, lastPathComponent(file));
        if (added)
            items.append(std::move(*block));
        return added;
    };
    if (includeBuiltin)
        if (auto added = append(builtinFile, loadBuiltinItems(builtinFile, appendLogLine)); !added)
            return std::unexpected(added.error());
    for (const std::string& file : *files) {
        auto block = loadDataFile(file, std::string(lastPathComponent(file)), appendLogLine);
        if (auto added = append(file, std::move(block)); !added)
            return std::unexpected(added.error());
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
    try {
        return readDataFile(file, std::move(sourceName), appendLogLine);
    } catch (const std::bad_alloc&) {
        return notEnoughMemory(lastPathComponent(file));
    }
}

} // namespace kavendra
