#pragma once

#include <optional>
#include <span>
#include <string>

namespace sondrix {

struct Settings;

// Two sources of a call that can't both be had.
struct Clash {
  std::string first, second;
  bool overwrites = false;  // a run of the first would replace the second, which may be the first itself
};

// The first two sources whose runs would write a file of the same name with these settings, or the first of
// which an output would take the place of a source.
std::optional<Clash> OutputClash(const Settings& settings, std::span<const std::string> sources);

}  // namespace sondrix
