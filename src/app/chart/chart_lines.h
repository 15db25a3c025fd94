#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

struct ChartRun;

// What there is to say of the chart, a sentence each: what is left out of it, its grid, how it was made and
// how well that predicts, its contours. Why it wasn't made is told with the files.
std::vector<std::string> ChartSentences(const ChartRun& run);

// At most that many decimals, and none that are zeros at the end.
std::string NumberText(double value, int decimals);

}  // namespace sondrix
