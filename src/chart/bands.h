#pragma once

#include <functional>

namespace sondrix {

// Calls work(from, to) for bands of rows that together are 0 to rows, each in a thread; returns when all are
// done. What a row becomes must not depend on the band that it is in. What one band throws is thrown on.
void InBands(int rows, int threads, const std::function<void(int from, int to)>& work);

}  // namespace sondrix
