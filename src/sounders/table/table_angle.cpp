#include "sounders/table/table_angle.h"

#include "sounders/table/table_cells.h"

#include <algorithm>
#include <cmath>

namespace sondrix {
namespace {

struct Hemisphere {
  std::string_view text;
  Axis axis;
  double sign;
};
// O is east, as the German word has it. Longer texts stand before those that begin them.
constexpr Hemisphere Hemispheres[] = {
    {"с.ш.", Axis::Latitude, 1},   {"ю.ш.", Axis::Latitude, -1}, {"в.д.", Axis::Longitude, 1},
    {"з.д.", Axis::Longitude, -1}, {"сш", Axis::Latitude, 1},    {"юш", Axis::Latitude, -1},
    {"вд", Axis::Longitude, 1},    {"зд", Axis::Longitude, -1},  {"N", Axis::Latitude, 1},
    {"n", Axis::Latitude, 1},      {"S", Axis::Latitude, -1},    {"s", Axis::Latitude, -1},
    {"E", Axis::Longitude, 1},     {"e", Axis::Longitude, 1},    {"O", Axis::Longitude, 1},
    {"o", Axis::Longitude, 1},     {"W", Axis::Longitude, -1},   {"w", Axis::Longitude, -1}};

// What may stand between the parts of an angle, in UTF-8 and as single bytes of the 8-bit code pages.
constexpr std::string_view Marks[] = {"°",    "º",    "′", "″",  "’", "”", "´", "deg", "\xB0",
                                      "\xBA", "\xB4", "'", "\"", ":", " ", "d", "m"};

bool TakeStart(std::string_view& text, std::string_view start) {
  if (!text.starts_with(start)) return false;
  text.remove_prefix(start.size());
  return true;
}

}  // namespace

std::optional<double> DegreesOfNmea(double value) {
  const double size = std::fabs(value);
  const double degrees = std::floor(size / 100);
  const double minutes = size - degrees * 100;
  if (minutes >= 60) return std::nullopt;
  return std::copysign(degrees + minutes / 60, value);
}

std::optional<double> SignOfLetter(std::string_view cell) {
  for (const Hemisphere& row : Hemispheres)
    if (cell == row.text) return row.sign;
  return std::nullopt;
}

std::optional<Angle> AngleOf(std::string_view text) {
  text = TrimmedCell(text);
  if (text.empty() || text.size() > 48) return std::nullopt;
  const Hemisphere* hemisphere = nullptr;
  for (const Hemisphere& row : Hemispheres) {
    std::string_view rest = text;
    if (rest.starts_with(row.text)) {
      rest.remove_prefix(row.text.size());
    } else if (rest.ends_with(row.text)) {
      rest.remove_suffix(row.text.size());
    } else {
      continue;
    }
    hemisphere = &row;
    text = TrimmedCell(rest);
    break;
  }
  double sign = hemisphere != nullptr ? hemisphere->sign : 1;
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
    if (text[0] == '-') sign = -sign;
    text.remove_prefix(1);
  }

  double parts[3] = {};
  std::size_t count = 0, whole = 0;
  while (!text.empty()) {
    const std::size_t length = std::min(text.find_first_not_of("0123456789.,"), text.size());
    const std::optional<double> part = CellNumber(text.substr(0, length));
    // Only the last part has decimals.
    if (!part || count == 3 || whole != count) return std::nullopt;
    if (text.substr(0, length).find_first_of(".,") == std::string_view::npos) ++whole;
    parts[count++] = *part;
    text.remove_prefix(length);
    for (bool isMark = true; isMark && !text.empty();) {
      isMark = std::any_of(std::begin(Marks), std::end(Marks),
                           [&](std::string_view mark) { return TakeStart(text, mark); });
      if (!isMark && (text[0] < '0' || text[0] > '9')) return std::nullopt;
    }
  }
  if (count == 0) return std::nullopt;
  Angle angle;
  if (hemisphere != nullptr) angle.axis = hemisphere->axis;
  if (count == 1 && hemisphere != nullptr && parts[0] > 180) {
    const std::optional<double> degrees = DegreesOfNmea(parts[0]);
    if (!degrees) return std::nullopt;
    parts[0] = *degrees;
  }
  angle.degrees = sign * (parts[0] + (parts[1] + parts[2] / 60) / 60);
  if (parts[1] >= 60 || parts[2] >= 60 || std::fabs(angle.degrees) > 180) return std::nullopt;
  return angle;
}

}  // namespace sondrix
