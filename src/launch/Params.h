#pragma once

#include "base/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// Splits params into tokens at Unicode white space. Single or double quotes, also in the middle of a word,
/// keep what is between them together and are dropped; there is no escape character. Empty tokens are
/// dropped, so "" gives none. Fails with LaunchError::unterminatedQuote.
Result<std::vector<std::string>> splitParams(std::string_view params);

} // namespace kavendra
