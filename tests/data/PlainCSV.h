#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavendra {

using CSVRows = std::vector<std::vector<std::string>>;

/// The rules of quoting as a plain state machine, one character at a time: what the reader's scan in blocks
/// is held to. Returns nothing when a quote is open at the end.
inline std::optional<CSVRows> plainCSVRows(std::string_view text) {
    CSVRows rows;
    std::vector<std::string> row;
    std::string field;
    bool inQuotes = false;
    const auto endField = [&] { row.push_back(std::exchange(field, {})); };
    const auto endRow = [&] {
        endField();
        rows.push_back(std::exchange(row, {}));
    };
    const auto is = [&](std::size_t i, char character) { return i < text.size() && text[i] == character; };

    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (inQuotes && c == '"' && is(i + 1, '"')) {
            field += '"';
            i += 2;
        } else if (inQuotes && c == '"') {
            inQuotes = false;
            i += 1;
        } else if (inQuotes) {
            field += c;
            i += 1;
        } else if (c == '"') {
            inQuotes = true;
            i += 1;
        } else if (c == ',') {
            endField();
            i += 1;
        } else if (c == '\n') {
            endRow();
            i += 1;
        } else if (c == '\r') {
            endRow();
            i += is(i + 1, '\n') ? 2 : 1;
        } else {
            field += c;
            i += 1;
        }
    }
    if (inQuotes)
        return {};
    if (!field.empty() || !row.empty())
        endRow();
    return rows;
}

} // namespace kavendra
