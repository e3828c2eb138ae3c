#pragma once

#include "data/ItemList.h"

#include <functional>
#include <optional>
#include <string>

namespace kavendra {

/// Returns the command of a built-in item on this machine, nothing when it could not be launched here.
using BuiltinCommand = std::function<std::optional<std::string>(const std::string& command)>;

/// Leaves out the built-in items that could not be launched on this machine, and all but the first of those
/// with the same title: further ones are alternatives. Throws std::bad_alloc.
void keepAvailableItems(ItemBlock& items, const BuiltinCommand& commandHere);

} // namespace kavendra
