#pragma once

#include "base/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// Splits params into tokens at Unicode white space. Text between single or double quotes stays together,
/// also inside a word; the quotes are dropped, and there is no escape character. Empty tokens are dropped, so
/// "" gives none. Fails with LaunchError::unterminatedQuote.
Result<std::vector<std::string>> splitParams(std::string_view params);

} // namespace kavendra
