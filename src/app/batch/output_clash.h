#pragma once

#include <optional>
#include <span>
#include <string>
#include <utility>

namespace sondrix {

struct Settings;

// The first two sources whose runs would write files of the same name with these settings: the same stem in
// the target folder, or a point list of the same name, which the MP job puts beside its source.
std::optional<std::pair<std::string, std::string>> OutputClash(const Settings& settings,
                                                               std::span<const std::string> sources);

}  // namespace sondrix
