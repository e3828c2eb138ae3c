#include "data/csv/CSVReader.h"

#include "base/TextDecoding.h"
#include "data/DataErrors.h"
#include "data/ItemMapper.h"
#include "data/LoadLimits.h"
#include "data/csv/CSVTokenizer.h"
#include "platform/Files.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace kavendra {

namespace {

/// Larger data files are not read; no table of launch items that people keep comes near this size.
constexpr std::size_t maximumFileSize = std::size_t{1} << 30;

/// The largest text of one file. The Unicode services count in 32 bits.
constexpr std::size_t maximumTextSize = std::numeric_limits<std::int32_t>::max();

/// After this many rows the number of all rows is estimated, so that their table grows once, not ten times.
constexpr std::size_t rowsBeforeEstimate = 4096;

/// Limit for the header in the log, in bytes. A damaged file may be one header from its first byte to its
/// last.
constexpr std::size_t maximumHeaderLine = std::size_t{64} << 10;

/// Passes the fields of a CSV text to the mapper. What runs for each field must be inlined into the
/// tokenizer: calls cost a third of the time.
class ItemCollector {
public:
    ItemCollector(ByteBuffer& text, std::size_t maximumItems)
        : m_text(text), m_maximumItems(maximumItems), m_mapper(rows, maximumItems, maximumHeaderLine) {}

    [[gnu::always_inline]] void field(CSVField field) {
        if (rowsRead == 0)
            return headerField(field);
        m_textRead = field.end;
        const std::uint8_t column = m_mapper.columnOf(m_fieldIndex++);
        if (column == ItemMapper::otherColumn && !m_mapper.isRowBlank())
            return;
        const TextSpan text = span(field);
        if (column != ItemMapper::otherColumn)
            m_mapper.setText(column, text);
        else if (text.length > 0)
            m_mapper.setHasOtherText();
    }

    [[gnu::always_inline]] void endRow() {
        if (rowsRead++ == 0)
            return;
        const auto end = m_mapper.endRow();
        if (end == ItemMapper::RowEnd::added && rows.size() == rowsBeforeEstimate)
            reserveRows();
        hasTooManyItems |= end == ItemMapper::RowEnd::tooManyItems;
        m_fieldIndex = 0;
    }

    const ItemMapper& mapper() const { return m_mapper; }

    std::size_t rowsRead = 0; ///< the header and blank ones included
    bool hasTooManyItems = false;
    std::vector<ItemRow> rows;

private:
    [[gnu::noinline]] void headerField(CSVField field) {
        const TextSpan name = span(field);
        m_mapper.addHeaderCell(m_text.view().substr(name.offset, name.length));
    }

    [[gnu::always_inline]] inline TextSpan span(CSVField field) {
        if (field.hasQuotes)
            unescapeCSVField(m_text.data(), field);
        const std::string_view text = trimmedCell({m_text.data() + field.begin, field.end - field.begin});
        return {.offset = static_cast<std::uint32_t>(text.data() - m_text.data()),
                .length = static_cast<std::uint32_t>(text.size())};
    }

    /// Expects the rest of the text to be like its beginning, and no table larger than the text.
    void reserveRows() {
        const std::size_t estimate = m_text.size() / (m_textRead / rows.size()) + rowsBeforeEstimate;
        rows.reserve(std::min({estimate, m_text.size() / sizeof(ItemRow), m_maximumItems}));
    }

    ByteBuffer& m_text;
    std::size_t m_maximumItems;
    ItemMapper m_mapper;
    std::size_t m_textRead = 0; ///< the end of the last field
    std::size_t m_fieldIndex = 0;
};

} // namespace

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
        // The rows after an open quote are not ended, so the quote is in the row after the last ended one.
        return {.logLines = {"CSV unterminated quote (" + name + "): opened in row " +
                             std::to_string(collector.rowsRead + 1)},
                .items = LaunchError::invalidCSVFormat("unterminated quote")};
    }
    DataFileReading reading;
    if (collector.rowsRead > 0) {
        // The header is not logged for a text with an open quote.
        reading.logLines = {"CSV headers (" + name + "): " + collector.mapper().headerLine()};
        if (const auto missing = collector.mapper().missingColumn()) {
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
