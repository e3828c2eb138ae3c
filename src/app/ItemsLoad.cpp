#include "app/ItemsLoad.h"

#include "data/DataDirectory.h"
#include "data/DataFile.h"
#include "data/LoadLimits.h"
#include "data/csv/CSVReader.h"
#include "data/workbook/WorkbookReader.h"
#include "platform/Files.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

namespace kavendra {

namespace {

/// Sums over the files of a load.
class LoadTotals {
public:
    /// Adds a file. Fails if the files so far exceed a limit.
    Result<void> add(const ItemBlock& block, std::string_view name) {
        m_fileSize += block.fileSize;
        m_items += block.rows.size();
        m_memory += block.text.size() + block.rows.size() * loadLimits::itemCost;
        m_xmlCost += block.xmlCost;
        const auto exceeded = [name](const std::string& what) {
            return invalidDataFile(name, what + " in all files together");
        };
        if (m_items > loadLimits::items)
            return exceeded("more than " + std::to_string(loadLimits::items) + " rows");
        if (m_memory > loadLimits::itemMemory(m_fileSize))
            return exceeded("too many rows or too much text");
        if (m_xmlCost > loadLimits::xmlCost(m_fileSize))
            return exceeded("too much XML");
        return {};
    }

private:
    std::size_t m_fileSize = 0, m_items = 0, m_memory = 0, m_xmlCost = 0;
};

DataFileReading loadDataFile(const DataFile& file, std::string sourceName) {
    try {
        if (file.kind == DataFileKind::workbook)
            return readWorkbookItems(file, std::move(sourceName));
        return readCSVFile(file, std::move(sourceName));
    } catch (const std::bad_alloc&) {
        return {.logLines = {}, .items = notEnoughMemory(file.name)};
    }
}

/// Reads all files; their log lines go to `logLines`.
Result<ItemList> loadAllItems(const ItemsLoadRequest& request, std::vector<std::string>& logLines) {
    if (auto ensured = ensureDataDirectory(request.dataDirectory); !ensured)
        return std::unexpected(ensured.error());
    const auto files = listDataFiles(request.dataDirectory);
    if (!files)
        return std::unexpected(files.error());
    ItemList items;
    LoadTotals totals;
    const auto append = [&](const DataFile& file, std::string_view sourceName) -> Result<void> {
        DataFileReading reading = loadDataFile(file, std::string(sourceName));
        std::ranges::move(reading.logLines, std::back_inserter(logLines));
        if (!reading.items)
            return std::unexpected(reading.items.error());
        auto added = totals.add(*reading.items, file.name);
        if (added)
            items.append(std::move(*reading.items));
        return added;
    };
    if (request.includeBuiltinItems && exists(request.builtinFile))
        if (auto added = append(dataFileAt(request.builtinFile), builtinSource); !added)
            return std::unexpected(added.error());
    for (const DataFile& file : *files)
        if (auto added = append(file, file.name); !added)
            return std::unexpected(added.error());
    return items;
}

} // namespace

ItemsLoad loadItems(const ItemsLoadRequest& request) {
    ItemsLoad load;
    auto items = loadAllItems(request, load.logLines);
    if (!items) {
        load.items = std::unexpected(items.error());
        return load;
    }
    auto index = makeSearchIndex(*items);
    if (index)
        load.items = LoadedItems{std::move(*items), std::move(*index)};
    else
        load.items = std::unexpected(index.error());
    return load;
}

} // namespace kavendra
