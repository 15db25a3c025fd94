#include "sounders/common/zone.h"

#include <cmath>
#include <date/tz.h>
#include <exception>
#include <string>

namespace sondrix {
namespace {

// Beyond some thousand years the rules of a zone mean nothing, and its arithmetic has an end.
constexpr double Reach = 4e11;

double ToUtcIn(const date::time_zone& zone, double seconds) {
  if (!(std::fabs(seconds) < Reach)) return seconds;
  const double whole = std::floor(seconds);
  const date::local_seconds local{std::chrono::seconds(static_cast<std::int64_t>(whole))};
  const date::local_info info = zone.get_info(local);
  return seconds - static_cast<double>(info.first.offset.count());
}

}  // namespace

std::optional<double> OffsetOf(std::string_view text) {
  for (const std::string_view name : {"UTC", "GMT", "utc", "gmt"})
    if (text.starts_with(name)) {
      text.remove_prefix(name.size());
      if (text.empty()) return 0;
      break;
    }
  if (text == "Z" || text == "z") return 0;
  if (text.size() < 2 || (text[0] != '+' && text[0] != '-')) return std::nullopt;
  const double sign = text[0] == '-' ? -1 : 1;
  int digits[4] = {}, count = 0;
  bool hasColon = false;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] == ':' && !hasColon && (count == 1 || count == 2)) {
      if (count == 1) {
        digits[1] = digits[0];
        digits[0] = 0;
        count = 2;
      }
      hasColon = true;
    } else if (text[i] >= '0' && text[i] <= '9' && count < 4) {
      digits[count++] = text[i] - '0';
    } else {
      return std::nullopt;
    }
  }
  if (count == 3 || (hasColon && count != 4)) return std::nullopt;
  const int hours = count == 1 ? digits[0] : digits[0] * 10 + digits[1];
  const int minutes = count == 4 ? digits[2] * 10 + digits[3] : 0;
  if (hours > 15 || minutes > 59) return std::nullopt;
  return sign * (hours * 3600 + minutes * 60);
}

std::optional<ToUtc> ZoneOf(std::string_view text) {
  if (const std::optional<double> offset = OffsetOf(text))
    return [ahead = *offset](double seconds) { return seconds - ahead; };
  try {
    // Names of the database have no other characters, and are no way through folders.
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_+-/";
    if (text.empty() || text.find_first_not_of(letters) != std::string_view::npos) return std::nullopt;
    const date::time_zone* const zone = date::locate_zone(std::string(text));
    return [zone](double seconds) { return ToUtcIn(*zone, seconds); };
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace sondrix
