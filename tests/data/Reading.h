#pragma once

#include "data/workbook/WorkbookReader.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavendra {

using Lines = std::vector<std::string>;

/// The four texts of each item, with a bar between them.
inline Lines itemTexts(const ItemBlock& block) {
    Lines items;
    for (const ItemRow& row : block.rows) {
        std::string& item = items.emplace_back();
        for (std::size_t column = 0; column < row.size(); ++column)
            item.append(column > 0 ? "|" : "").append(block.value(row, column));
    }
    return items;
}

/// The result of reading a data file, in a form to compare.
struct Reading {
    Lines items; ///< as itemTexts has them
    Lines log;
    std::string failure;
};

/// `result` is of a file whose source is "source".
inline Reading comparable(DataFileReading result) {
    Reading reading{.items = {}, .log = std::move(result.logLines), .failure = {}};
    if (result.items) {
        EXPECT_EQ(result.items->source, "source");
        reading.items = itemTexts(*result.items);
    } else {
        reading.failure = result.items.error().description;
    }
    return reading;
}

inline Reading readWorkbook(std::string_view bytes) {
    return comparable(readWorkbookBytes(bytes, "book.xlsx", "source"));
}

} // namespace kavendra
