#pragma once

#include "app/BuiltinItems.h"
#include "base/Result.h"
#include "data/ItemList.h"
#include "search/SearchIndex.h"

#include <string>
#include <vector>

namespace kavendra {

/// Items and the index that searches them.
struct LoadedItems {
    ItemList list;
    SearchIndex index;
};

struct ItemsLoadRequest {
    std::string dataDirectory; ///< created if it is missing
    bool includeBuiltinItems = false;
    std::string builtinFile;            ///< its items come first; there are none if it does not exist
    BuiltinCommand builtinCommand = {}; ///< see keepAvailableItems; without it all built-in items are shown
};

/// Result of a load.
struct ItemsLoad {
    std::vector<std::string> logLines; ///< headers of the files read, in order, also if the load failed
    Result<LoadedItems> items;
};

/// Reads all data files of a directory on several threads, joins them in their order and builds the search
/// index. Uses no shared state, so it may run on any thread. Fails as ensureDataDirectory and listDataFiles
/// do, with the failure of the first file that cannot be read, with the first file at which all files
/// together exceed a limit (see LoadLimits.h), or as makeSearchIndex does.
ItemsLoad loadItems(const ItemsLoadRequest& request);

} // namespace kavendra
