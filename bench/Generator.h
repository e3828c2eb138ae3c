#pragma once

#include "data/ItemList.h"

#include <cstddef>
#include <string>

namespace kavendra {

/// Words in about one of 20 generated rows, and in one of 50,000.
inline constexpr const char* commonWord = "browser";
inline constexpr const char* rareWord = "zanzibar";

/// Returns a CSV text with a header and `rows` rows of about 85 bytes in four columns, one in 20 of them
/// Japanese. The result depends only on `rows`.
std::string generateCSV(std::size_t rows);

/// Returns the items of generateCSV.
ItemList generateItems(std::size_t rows);

} // namespace kavendra
