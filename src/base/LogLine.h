#pragma once

#include <functional>
#include <string_view>

namespace kavendra {

/// Takes one diagnostic line for the log; never fails.
using LogLine = std::function<void(std::string_view)>;

} // namespace kavendra
