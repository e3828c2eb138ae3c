#include "app/ItemsLoad.h"

#include "base/Parallel.h"
#include "data/DataDirectory.h"
#include "data/DataFile.h"
#include "data/LoadLimits.h"
#include "data/csv/CSVReader.h"
#include "data/workbook/WorkbookReader.h"
#include "platform/Files.h"

#include <algorithm>
#include <condition_variable>
#include <iterator>
#include <mutex>
#include <new>
#include <optional>
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

/// A data file and what its items show as their source.
struct SourceFile {
    DataFile file;
    std::string sourceName;
    BuiltinCommand builtinCommand = {}; ///< empty for files of the data directory
};

/// Returns the files of a load in the order of their items.
Result<std::vector<SourceFile>> sourceFiles(const ItemsLoadRequest& request) {
    if (auto ensured = ensureDataDirectory(request.dataDirectory); !ensured)
        return std::unexpected(ensured.error());
    const auto dataFiles = listDataFiles(request.dataDirectory);
    if (!dataFiles)
        return std::unexpected(dataFiles.error());
    std::vector<SourceFile> files;
    if (request.includeBuiltinItems && exists(request.builtinFile))
        files.push_back(
            {dataFileAt(request.builtinFile), std::string(builtinSource), request.builtinCommand});
    for (const DataFile& file : *dataFiles)
        files.push_back({.file = file, .sourceName = file.name});
    return files;
}

DataFileReading readDataFile(const SourceFile& source) {
    try {
        DataFileReading reading = source.file.kind == DataFileKind::workbook
                                      ? readWorkbookItems(source.file, source.sourceName)
                                      : readCSVFile(source.file, source.sourceName);
        if (reading.items && source.builtinCommand)
            keepAvailableItems(*reading.items, source.builtinCommand);
        return reading;
    } catch (const std::bad_alloc&) {
        return {.logLines = {}, .items = notEnoughMemory(source.file.name)};
    }
}

/// Reads files on several threads and joins their items in the order of the files. A file is not read before
/// all but a few of the files before it are joined, so that only few files hold memory that is not charged
/// yet; and not after a file before it has failed.
class ParallelReading {
public:
    explicit ParallelReading(std::vector<SourceFile> files)
        : m_files(std::move(files)), m_readings(m_files.size()), m_end(m_files.size()) {}

    /// Returns the items, or the failure of the first file that fails. The header lines up to that file go to
    /// `logLines`.
    Result<ItemList> run(std::vector<std::string>& logLines) {
        forEachInParallel(m_files.size(), [this](std::size_t index) { read(index); });
        std::ranges::move(m_logLines, std::back_inserter(logLines));
        return std::move(m_items);
    }

private:
    void read(std::size_t index) {
        if (!waitForTurn(index))
            return;
        DataFileReading reading = readDataFile(m_files[index]);
        const std::scoped_lock lock(m_mutex);
        if (!reading.items)
            m_end = std::min(m_end, index + 1);
        m_readings[index] = std::move(reading);
        joinReadings();
        m_changed.notify_all();
    }

    /// Returns false if the file is not needed.
    bool waitForTurn(std::size_t index) {
        const std::size_t ahead = 2 * parallelThreads();
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return index < m_joined + ahead || index >= m_end; });
        return index < m_end;
    }

    /// Joins the readings whose turn it is.
    void joinReadings() {
        for (; m_joined < m_end && m_readings[m_joined]; ++m_joined) {
            DataFileReading reading = *std::exchange(m_readings[m_joined], std::nullopt);
            std::ranges::move(reading.logLines, std::back_inserter(m_logLines));
            if (const auto joined = join(std::move(reading.items), m_files[m_joined].file.name); !joined) {
                m_items = std::unexpected(joined.error());
                m_end = m_joined + 1;
            }
        }
    }

    Result<void> join(Result<ItemBlock> block, std::string_view name) {
        if (!block)
            return std::unexpected(block.error());
        auto added = m_totals.add(*block, name);
        if (added)
            m_items->append(std::move(*block));
        return added;
    }

    const std::vector<SourceFile> m_files;
    std::mutex m_mutex;
    std::condition_variable m_changed; ///< m_joined or m_end
    std::vector<std::optional<DataFileReading>> m_readings;
    std::size_t m_joined = 0; ///< files
    std::size_t m_end;        ///< behind the first file known to fail
    LoadTotals m_totals;
    Result<ItemList> m_items;
    std::vector<std::string> m_logLines;
};

/// Reads all files; their log lines go to `logLines`.
Result<ItemList> loadAllItems(const ItemsLoadRequest& request, std::vector<std::string>& logLines) {
    auto files = sourceFiles(request);
    if (!files)
        return std::unexpected(files.error());
    return ParallelReading(std::move(*files)).run(logLines);
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
