#pragma once

#include "base/UUID.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kavendra {

/// One launchable row of a data file.
struct LaunchItem {
    UUID id; ///< identity within one load; never stored
    std::string title;
    std::string command; ///< a web address, a path or a program name
    std::string params;
    std::string keywords; ///< searched only
    std::string source;   ///< the data file's name, or builtinSource

    bool operator==(const LaunchItem&) const = default;
};

/// The source of items that come with the program and have no data file.
inline constexpr std::string_view builtinSource = "(Built-in)";

/// The columns of an item in display order; the values are indexes into itemColumns.
enum class ItemColumn : std::uint8_t { title, command, params, keywords, source };

/// Properties of a column.
struct ItemColumnProperties {
    std::string_view identifier; ///< name in the header of data files and in the state file
    const char* headerTitle;     ///< in the table
    int initialWidth;            ///< in points
    bool isRequired;             ///< whether every data file must have the column
    bool isProse; ///< natural text direction; commands, params and file names run left to right
    std::string LaunchItem::* field;
};

/// All columns; those that data files must have come first, in the order in which they are checked.
inline constexpr std::array<ItemColumnProperties, 5> itemColumns{{
    {"Title", "Title", 240, true, true, &LaunchItem::title},
    {"Command", "Command / Path", 320, true, false, &LaunchItem::command},
    {"Params", "Params", 240, true, false, &LaunchItem::params},
    {"Keywords", "Keywords", 220, true, true, &LaunchItem::keywords},
    {"Source", "Source", 120, false, false, &LaunchItem::source},
}};

constexpr const ItemColumnProperties& properties(ItemColumn column) {
    return itemColumns[static_cast<std::size_t>(column)];
}

/// The identifiers of the columns that every data file must have.
inline constexpr auto requiredColumns = [] {
    constexpr auto count = [] {
        std::size_t required = 0;
        for (const ItemColumnProperties& column : itemColumns)
            required += column.isRequired ? 1 : 0;
        return required;
    }();
    std::array<std::string_view, count> identifiers{};
    for (std::size_t index = 0; index < count; ++index)
        identifiers[index] = itemColumns[index].identifier;
    return identifiers;
}();

/// Returns the item's text in that column.
inline std::string_view columnValue(const LaunchItem& item, ItemColumn column) {
    return item.*properties(column).field;
}

} // namespace kavendra
