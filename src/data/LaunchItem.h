#pragma once

#include "base/UUID.h"

#include <array>
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

/// The columns that every data file must have, in the order in which they are checked.
inline constexpr std::array<std::string_view, 4> requiredColumns{"Title", "Command", "Params", "Keywords"};

/// Returns the field that a column identifier names ("Title", "Command", "Params", "Keywords", "Source",
/// compared exactly), the empty text for any other identifier.
std::string_view columnValue(const LaunchItem& item, std::string_view columnIdentifier);

} // namespace kavendra
