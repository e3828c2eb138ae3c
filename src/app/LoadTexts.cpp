#include "app/LoadTexts.h"

#include "app/DataDirectory.h"
#include "data/LaunchItem.h"

namespace kavendra {

std::string loadedMessage(std::size_t itemCount, const std::string& dataDirectory) {
    if (itemCount == 0)
        return "No launch items found in " + dataDirectory;
    return "Loaded " + std::to_string(itemCount) + " items";
}

std::string debugSummaryText(const std::string& dataDirectory, const std::string& logDirectory) {
    std::string columns;
    for (const std::string_view column : requiredColumns)
        columns.append(columns.empty() ? "" : ", ").append(column);
    return "CSV columns: " + columns +
           " | Source is added by app | Ignore prefix: " + std::string(ignorePrefix) +
           " | Data dir: " + dataDirectory + " | Log dir: " + logDirectory;
}

} // namespace kavendra
