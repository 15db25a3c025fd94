#include "sounders/nmea/nmea_fix.h"

#include "core/text.h"
#include "sounders/common/calendar.h"
#include "sounders/common/iso_time.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace sondrix {

namespace {

constexpr int FirstYear = 80;  // of the two digits of a date: 1980, when the satellites' time began

// hhmmss with or without decimals; not a number where it is empty, none where it is no time.
std::optional<double> OfDay(std::string_view field) {
  if (field.empty()) return Unknown;
  const std::optional<FieldNumber> number = NumberOf(field);
  if (!number || number->value < 0 || number->value >= 240'000) return std::nullopt;
  const auto whole = static_cast<int>(number->value);
  const int hours = whole / 10'000, minutes = whole / 100 % 100;
  const double seconds = number->value - hours * 10'000 - minutes * 100;
  if (minutes >= 60 || seconds >= 61) return std::nullopt;
  return hours * 3600 + minutes * 60 + KeptSeconds(seconds);
}

int YearOf(int twoDigits) { return twoDigits + (twoDigits < FirstYear ? 2000 : 1900); }

// ddmmyy
std::optional<int> DayOfDate(std::string_view field) {
  const std::optional<int> day = TakeDigits(field, 2, 2), month = TakeDigits(field, 2, 2);
  const std::optional<int> year = TakeDigits(field, 2, 2);
  if (!day || !month || !year || !field.empty()) return std::nullopt;
  return DayOf(YearOf(*year), *month, *day);
}

// One coordinate: degrees times a hundred and minutes, and the letter of the hemisphere behind it.
struct Coordinate {
  double degrees = 0;
  int decimals = 0;
};
std::optional<Coordinate> CoordinateOf(std::string_view field, std::string_view letter, char positive,
                                       char negative, double most) {
  const std::optional<FieldNumber> number = NumberOf(field);
  if (!number || number->value < 0 || number->value > 18'000 || letter.size() != 1) return std::nullopt;
  const char hemisphere = Lower(letter[0]);
  if (hemisphere != positive && hemisphere != negative) return std::nullopt;
  const int degrees = static_cast<int>(number->value) / 100;
  const double minutes = number->value - degrees * 100;
  const double angle = degrees + minutes / 60;
  if (minutes >= 60 || angle > most) return std::nullopt;
  return Coordinate{hemisphere == negative ? -angle : angle, number->decimals};
}

// Reads latitude, its letter, longitude and its letter from a field on. False where they can't be understood.
bool ReadPosition(const NmeaFields& fields, std::size_t from, NmeaFix& fix) {
  const auto latitude = CoordinateOf(fields[from], fields[from + 1], 'n', 's', 90);
  const auto longitude = CoordinateOf(fields[from + 2], fields[from + 3], 'e', 'w', 180);
  if (!latitude || !longitude) return false;
  fix.decimals = latitude->decimals;
  if (latitude->degrees == 0 && longitude->degrees == 0) return true;
  fix.latitude = latitude->degrees;
  fix.longitude = longitude->degrees;
  return true;
}

bool IsActive(std::string_view status) { return !status.empty() && Lower(status[0]) == 'a'; }

// Letters of the systems in use: autonomous, differential, precise, two kinds of real time kinematic. Others
// are estimated, typed in, simulated or no fix.
bool IsMeasured(std::string_view modes) {
  return std::any_of(modes.begin(), modes.end(), [](char mode) {
    return std::string_view("adprf").find(Lower(mode)) != std::string_view::npos;
  });
}

// Where the kinds have their fields.
struct Layout {
  std::size_t time, position, least;  // least: fewer fields are a sentence that was cut
  bool (*isFix)(const NmeaFields& fields);
};

const Layout* LayoutOf(SentenceKind kind) {
  static constexpr Layout gga = {0, 1, 6, [](const NmeaFields& fields) {
                                   const std::string_view quality = fields[5];
                                   return quality.size() == 1 && quality[0] >= '1' && quality[0] <= '5';
                                 }};
  static constexpr Layout rmc = {0, 2, 9, [](const NmeaFields& fields) {
                                   return IsActive(fields[1]) &&
                                          (fields[11].empty() || IsMeasured(fields[11]));
                                 }};
  static constexpr Layout gns = {0, 1, 6, [](const NmeaFields& fields) { return IsMeasured(fields[5]); }};
  // The first receivers wrote neither time nor status.
  static constexpr Layout gll = {4, 0, 4, [](const NmeaFields& fields) {
                                   const bool isActive = fields.Count() <= 4 || IsActive(fields[5]);
                                   return isActive && (fields[6].empty() || IsMeasured(fields[6]));
                                 }};
  switch (kind) {
    case SentenceKind::Gga:
      return &gga;
    case SentenceKind::Rmc:
      return &rmc;
    case SentenceKind::Gns:
      return &gns;
    default:
      return &gll;
  }
}

// time,day,month,year,... Its date is known where all three are there.
std::optional<NmeaFix> OfDateSentence(const NmeaFields& fields) {
  const std::optional<double> ofDay = OfDay(fields[0]);
  if (!ofDay) return std::nullopt;
  NmeaFix fix = {.ofDay = *ofDay};
  if (fields[1].empty() || fields[2].empty() || fields[3].empty()) return fix;
  const auto day = NumberOf(fields[1]), month = NumberOf(fields[2]), year = NumberOf(fields[3]);
  if (!day || !month || !year || year->value < 0 || year->value > 9999 || day->value < 0 || day->value > 31 ||
      month->value < 0 || month->value > 12)
    return std::nullopt;
  const int told = static_cast<int>(year->value), wholeYear = told < 100 ? YearOf(told) : told;
  if (wholeYear >= 1900 + FirstYear)
    fix.day = DayOf(wholeYear, static_cast<int>(month->value), static_cast<int>(day->value));
  return fix;
}

}  // namespace

std::optional<NmeaFix> FixOf(SentenceKind kind, const NmeaFields& fields) {
  if (kind == SentenceKind::Zda) return OfDateSentence(fields);
  const Layout& layout = *LayoutOf(kind);
  if (fields.Count() < layout.least) return std::nullopt;
  const std::optional<double> ofDay = OfDay(fields[layout.time]);
  if (!ofDay) return std::nullopt;
  NmeaFix fix = {.ofDay = *ofDay};
  if (!layout.isFix(fields)) return fix;
  if (!ReadPosition(fields, layout.position, fix)) return std::nullopt;
  if (kind == SentenceKind::Rmc && fix.HasPosition()) fix.day = DayOfDate(fields[8]);
  return fix;
}

}  // namespace sondrix
