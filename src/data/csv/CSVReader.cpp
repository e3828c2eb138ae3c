#include "data/csv/CSVReader.h"

#include "base/Text.h"
#include "base/TextDecoding.h"
#include "data/DataErrors.h"
#include "data/LoadLimits.h"
#include "data/csv/CSVTokenizer.h"
#include "platform/Files.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

namespace kavendra {

namespace {

/// Larger data files are not read; no table of launch items that people keep comes near this size.
constexpr std::size_t maximumFileSize = std::size_t{1} << 30;

/// The largest text of one file. The Unicode services count in 32 bits.
constexpr std::size_t maximumTextSize = std::numeric_limits<std::int32_t>::max();

/// After this many rows the number of all rows is estimated, so that their table grows once, not ten times.
constexpr std::size_t rowsBeforeEstimate = 4096;

/// No more of a header goes to the log: a damaged file may be one header from its first byte to its last.
constexpr std::size_t maximumHeaderLine = std::size_t{64} << 10;

constexpr std::uint8_t notRequired = 0xFF;

constexpr std::string_view unterminatedQuote = "unterminated quote";

class RowCollector {
public:
    explicit RowCollector(std::string_view csv) : text(csv) {}

    void field(CSVField field) {
        if (field.hasQuotes)
            unescapeCSVField(text.data(), field);
        row.emplace_back(text, field.begin, field.end - field.begin);
    }
    void endRow() { rows.push_back(std::exchange(row, {})); }

    std::string text;
    std::vector<std::vector<std::string>> rows;

private:
    std::vector<std::string> row;
};

/// Maps rows to items by the names in the first row.
class ItemCollector {
public:
    ItemCollector(ByteBuffer& csv, std::size_t maximumItems) : text(csv), maximumItems(maximumItems) {}

    void field(CSVField field) {
        if (!hasHeader) {
            headerField(value(field));
            return;
        }
        textRead = field.end;
        const std::size_t index = fieldIndex++;
        const std::uint8_t column = index < columns.size() ? columns[index] : notRequired;
        if (column != notRequired) {
            row[column] = span(field);
            isBlank = isBlank && row[column].length == 0;
        } else if (isBlank) {
            isBlank = span(field).length == 0;
        }
    }

    void endRow() {
        ++rowsRead;
        if (hasHeader && !isBlank)
            addItem();
        hasHeader = true;
        row = {};
        isBlank = true;
        fieldIndex = 0;
    }

    /// Returns the first required column that the header lacks.
    std::optional<std::string_view> missingColumn() const {
        const auto missing = std::ranges::find(hasColumn, false);
        if (missing == hasColumn.end())
            return {};
        return requiredColumns[static_cast<std::size_t>(missing - hasColumn.begin())];
    }

    bool hasHeader = false;
    bool hasTooManyItems = false;
    std::size_t rowsRead = 0; ///< blank ones included
    std::string headerLine;   ///< the header's fields joined for the log
    std::vector<ItemRow> rows;

private:
    void headerField(std::string_view name) {
        addToHeaderLine(fieldIndex++ > 0 ? " | " : "");
        addToHeaderLine(name);
        const auto column =
            static_cast<std::size_t>(std::ranges::find(requiredColumns, name) - requiredColumns.begin());
        const bool counts = column < requiredColumns.size() && !std::exchange(hasColumn[column], true);
        columns.push_back(counts ? static_cast<std::uint8_t>(column) : notRequired);
    }

    void addItem() {
        if (rows.size() == maximumItems) {
            hasTooManyItems = true;
            return;
        }
        rows.push_back(row);
        if (rows.size() == rowsBeforeEstimate)
            reserveRows();
    }

    void addToHeaderLine(std::string_view text) {
        if (headerLine.size() + text.size() <= maximumHeaderLine)
            headerLine += text;
        else if (!headerLine.ends_with("…"))
            headerLine += "…";
    }

    std::string_view value(CSVField field) {
        const TextSpan trimmedField = span(field);
        return text.view().substr(trimmedField.offset, trimmedField.length);
    }

    TextSpan span(CSVField field) {
        if (field.hasQuotes)
            unescapeCSVField(text.data(), field);
        if (mayHaveSpaceAround(field)) {
            const std::string_view untrimmed(text.data() + field.begin, field.end - field.begin);
            const std::string_view kept = trimmed(untrimmed);
            field.begin = static_cast<std::size_t>(kept.data() - text.data());
            field.end = field.begin + kept.size();
        }
        return {.offset = static_cast<std::uint32_t>(field.begin),
                .length = static_cast<std::uint32_t>(field.end - field.begin)};
    }

    bool mayHaveSpaceAround(const CSVField& field) const {
        const auto isVisibleASCII = [](char byte) { return byte > ' ' && byte <= '~'; };
        return field.begin != field.end &&
               !(isVisibleASCII(text.data()[field.begin]) && isVisibleASCII(text.data()[field.end - 1]));
    }

    /// Expects the rest of the text to be like its beginning, and no table larger than the text.
    void reserveRows() {
        const std::size_t estimate = text.size() / (textRead / rows.size()) + rowsBeforeEstimate;
        rows.reserve(std::min({estimate, text.size() / sizeof(ItemRow), maximumItems}));
    }

    ByteBuffer& text;
    const std::size_t maximumItems;
    std::vector<std::uint8_t> columns; ///< for each header field, which required column it is
    std::array<bool, requiredColumns.size()> hasColumn{};
    ItemRow row{};
    std::size_t textRead = 0; ///< the end of the last field
    std::size_t fieldIndex = 0;
    bool isBlank = true;
};

} // namespace

Result<std::vector<std::vector<std::string>>> parseCSVRows(std::string_view text) {
    RowCollector collector(text);
    if (!tokenizeCSV(collector.text.data(), collector.text.size(), collector))
        return LaunchError::invalidCSVFormat(unterminatedQuote);
    return std::move(collector.rows);
}

DataFileReading readCSVItems(ByteBuffer text, std::string_view fileName, std::string sourceName,
                             std::optional<std::size_t> fileSize) {
    const std::string name(fileName);
    if (text.size() > maximumTextSize)
        return {.logLines = {}, .items = LaunchError::invalidCSVFormat(name + ": failed to read file")};

    const std::size_t size = fileSize.value_or(text.size());
    const std::size_t maximumItems =
        std::min(loadLimits::items, loadLimits::itemMemory(size) / loadLimits::itemCost);
    ItemCollector collector(text, maximumItems);
    if (!tokenizeCSV(text.data(), text.size(), collector)) {
        // No row ends behind the quote, so it stands in the row that did not end.
        return {.logLines = {"CSV unterminated quote (" + name + "): opened in row " +
                             std::to_string(collector.rowsRead + 1)},
                .items = LaunchError::invalidCSVFormat(unterminatedQuote)};
    }
    DataFileReading reading;
    if (collector.hasHeader) {
        // Only a text that could be split to its end has a header to report.
        reading.logLines = {"CSV headers (" + name + "): " + collector.headerLine};
        if (const auto missing = collector.missingColumn()) {
            reading.items = LaunchError::missingRequiredColumns(name + ": " + std::string(*missing));
            return reading;
        }
    }
    if (collector.hasTooManyItems)
        reading.items =
            LaunchError::invalidCSVFormat(name + ": more than " + std::to_string(maximumItems) + " rows");
    else
        reading.items = ItemBlock{.text = std::move(text),
                                  .rows = std::move(collector.rows),
                                  .source = std::move(sourceName),
                                  .fileSize = size};
    return reading;
}

DataFileReading readCSVFile(const DataFile& file, std::string sourceName) {
    auto bytes = readFile(file.path, maximumFileSize);
    if (!bytes)
        return {.logLines = {}, .items = LaunchError::invalidCSVFormat(file.name + ": failed to read file")};
    const std::size_t fileSize = bytes->size();
    auto text = decodeText(std::move(*bytes));
    if (!text)
        return {.logLines = {},
                .items = LaunchError::invalidCSVFormat(file.name + ": failed to decode text")};
    return readCSVItems(std::move(*text), file.name, std::move(sourceName), fileSize);
}

} // namespace kavendra
