#pragma once

#include "base/Result.h"
#include "data/ItemList.h"
#include "search/SearchText.h"

#include <cstddef>
#include <vector>

namespace kavendra {

/// The largest number of items in a part of the search index: small enough for a few threads to share the
/// work on a list, large enough for the memory of a part to come in huge pages.
inline constexpr std::size_t searchPartSize = 100'000;

/// Folds all items on several threads. Returns the parts in the order of the items; each is of one block and
/// has at most `partSize` items. Fails with the name of the first file with which the items take more memory
/// than loadLimits::itemMemory allows for the files so far. Fails with the name of the largest file when
/// there is not enough memory for the index or for showing the items.
Result<std::vector<SearchText>> makeSearchParts(const ItemList& items, std::size_t partSize = searchPartSize);

} // namespace kavendra
