#include "data/LaunchItem.h"

namespace kavendra {

std::string_view columnValue(const LaunchItem& item, std::string_view columnIdentifier) {
    if (columnIdentifier == "Title")
        return item.title;
    if (columnIdentifier == "Command")
        return item.command;
    if (columnIdentifier == "Params")
        return item.params;
    if (columnIdentifier == "Keywords")
        return item.keywords;
    if (columnIdentifier == "Source")
        return item.source;
    return {};
}

} // namespace kavendra
