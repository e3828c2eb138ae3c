#pragma once

#include <cstddef>
#include <functional>

namespace kavendra {

/// Returns how many threads forEachInParallel uses: one for each core, at most eight.
std::size_t parallelThreads();

/// Calls `work(index)` for each index below `count`, on the calling thread and others at the same time. The
/// calls begin in ascending order of the indexes. Returns when all have ended. `work` must not throw. If no
/// thread can be created, the calling one does all the work.
void forEachInParallel(std::size_t count, const std::function<void(std::size_t)>& work);

} // namespace kavendra
