#pragma once

#include "data/workbook/WorkbookReader.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
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

/// What came of reading a data file, in a form to compare.
struct Reading {
    Lines items; ///< as itemTexts has them
    Lines log;
    std::string failure;
};

/// `read` returns a block whose source is "source".
inline Reading readingBy(const std::function<Result<ItemBlock>(const LogLine&)>& read) {
    Reading reading;
    const auto block = read([&](std::string_view line) { reading.log.emplace_back(line); });
    if (block) {
        EXPECT_EQ(block->source, "source");
        reading.items = itemTexts(*block);
    } else {
        reading.failure = block.error().description;
    }
    return reading;
}

inline Reading readWorkbook(std::string_view bytes) {
    return readingBy(
        [&](const LogLine& log) { return readWorkbookBytes(bytes, "book.xlsx", "source", log); });
}

} // namespace kavendra
