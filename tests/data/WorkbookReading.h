#pragma once

#include "data/WorkbookReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kavendra {

/// What came of reading a workbook, in a form to compare.
struct WorkbookReading {
    std::vector<std::string> items; ///< the four texts of each, with a bar between them
    std::vector<std::string> log;
    std::string failure;
};

inline WorkbookReading readWorkbook(std::string_view bytes) {
    WorkbookReading reading;
    const auto block = readWorkbookBytes(bytes, "book.xlsx", "source",
                                         [&](std::string_view line) { reading.log.emplace_back(line); });
    if (!block) {
        reading.failure = block.error().description;
        return reading;
    }
    EXPECT_EQ(block->source, "source");
    for (const ItemRow& row : block->rows) {
        std::string item;
        for (std::size_t column = 0; column < row.size(); ++column)
            item.append(column > 0 ? "|" : "").append(block->value(row, column));
        reading.items.push_back(item);
    }
    return reading;
}

} // namespace kavendra
