#pragma once

#include "base/Result.h"

#include <string>

namespace kavendra {

/// Puts a small data file to start from, "Sample.csv", into `directory`, creating that when it is missing. A
/// file of that name that is there already stays. Fails with the system's reason.
Result<void> writeSampleDataFile(const std::string& directory);

} // namespace kavendra
