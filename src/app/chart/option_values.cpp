#include "app/chart/option_values.h"

#include "core/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace sondrix {

std::vector<std::string_view> SplitAtCommas(std::string_view text) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t comma = text.find(',');
    parts.push_back(Trimmed(text.substr(0, comma)));
    if (comma == std::string_view::npos) return parts;
    text.remove_prefix(comma + 1);
  }
}

std::optional<double> NumberIn(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<double> CentimetresIn(std::string_view text) {
  constexpr double most = 1e5;  // no boat is longer than that
  const auto number = NumberIn(text);
  if (!number || std::abs(*number) > most) return std::nullopt;
  return *number / 100;
}

std::optional<double> LengthIn(std::string_view text) {
  constexpr double least = 1e-3, most = 1e6;
  const auto number = NumberIn(text);
  return number && *number >= least && *number <= most ? number : std::nullopt;
}

std::string EpsgCode(std::string_view text) {
  constexpr std::string_view authority = "epsg:";
  constexpr std::size_t mostDigits = 9;
  const std::string_view number = text.substr(std::min(text.size(), authority.size()));
  const bool isCode = std::equal(authority.begin(), authority.end(), text.begin(),
                                 text.end() - static_cast<std::ptrdiff_t>(number.size()),
                                 [](char a, char b) { return a == Lower(b); }) &&
                      !number.empty() && number.size() <= mostDigits &&
                      number.find_first_not_of("0123456789") == std::string_view::npos;
  return isCode ? "EPSG:" + std::string(number) : std::string();
}

std::vector<double> DepthsIn(std::string_view text) {
  constexpr double most = 2e4;  // deeper than any sea, and than any in feet but the deepest
  std::vector<double> depths;
  for (const std::string_view part : SplitAtCommas(text)) {
    const auto depth = NumberIn(part);
    if (!depth || *depth <= (depths.empty() ? 0 : depths.back()) || *depth > most) return {};
    depths.push_back(*depth);
  }
  return depths;
}

}  // namespace sondrix
