#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace sondrix {

struct Settings;

// Why a source of a call can't be had beside the others.
struct Clash {
  std::string path;         // that it would write
  std::string other;        // the source that has the same output, or whose place it would take
  bool overwrites = false;  // it would take the place of the other, which may be the source itself
};

// For each source what speaks against its run with these settings, if anything does.
std::vector<std::optional<Clash>> OutputClashes(const Settings& settings,
                                                std::span<const std::string> sources);

}  // namespace sondrix
