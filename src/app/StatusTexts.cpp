#include "app/StatusTexts.h"

#include "data/DataDirectory.h"
#include "data/LaunchItem.h"

#include <string_view>

namespace kavendra {

std::string loadedMessage(std::size_t itemCount, const std::string& dataDirectory) {
    if (itemCount == 0)
        return "No launch items found in " + dataDirectory;
    return "Loaded " + std::to_string(itemCount) + " items";
}

std::string debugSummary(const LaunchSettings& settings) {
    std::string columns;
    for (const std::string_view column : requiredColumns)
        columns.append(columns.empty() ? "" : ", ").append(column);
    return "CSV columns: " + columns +
           " | Source is added by app | Ignore prefix: " + std::string(ignorePrefix) +
           " | Data dir: " + settings.dataDirectoryPath + " | Log dir: " + settings.logDirectoryPath;
}

} // namespace kavendra
