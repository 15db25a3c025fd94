#pragma once

#include <cstddef>
#include <functional>

namespace sondrix {

// Does something for each index below count, as many at a time as there are threads, the lowest first. Each
// thread makes itself what does it. What one throws ends the others at their next index and is thrown on.
void InParallel(std::size_t count, int threads,
                const std::function<std::function<void(std::size_t index)>()>& makeWork);

}  // namespace sondrix
