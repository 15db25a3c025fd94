#include "sounders/nmea/nmea_depth.h"

#include "core/sounding.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace sondrix {

namespace {

constexpr double DeepestTransducer = 50;          // metres below the water; no ship draws more
constexpr double Foot = 0.3048, Fathom = 1.8288;  // metres

// One of the three ways in which a sentence tells its depth.
struct Way {
  double metres = 0, step = 0;  // step: the unit of its last digit, metres
  bool isTold = false;

  bool AgreesWith(const Way& other) const {
    return isTold && other.isTold && std::abs(metres - other.metres) <= step + other.step;
  }
};

Way WayOf(const FieldNumber& number, double unit) {
  static constexpr std::array<double, 7> steps = {1, 1e-1, 1e-2, 1e-3, 1e-4, 1e-5, 1e-6};
  const std::size_t decimals = std::min(static_cast<std::size_t>(number.decimals), steps.size() - 1);
  return {number.value * unit, steps[decimals] * unit, true};
}

const Way& Finer(const Way& a, const Way& b) { return b.step < a.step ? b : a; }

// feet,f,metres,M,fathoms,F: of the ways that agree the one with the finest step. The letters say what is
// what; feet and fathoms have the same one where a log has lost its capitals, and their places tell.
std::optional<ToldDepth> OfThreeUnits(const NmeaFields& fields, bool isFromSurface) {
  enum { Feet, Metres, Fathoms, WayCount };
  std::array<Way, WayCount> ways;
  std::array<FieldNumber, WayCount> numbers;
  bool isEmpty = true;
  const bool hasBoth = fields[1] != fields[5];
  for (std::size_t i = 0; i < WayCount; ++i) {
    const std::string_view field = fields[2 * i], letter = fields[2 * i + 1];
    if (field.empty()) continue;
    isEmpty = false;
    const std::optional<FieldNumber> number = NumberOf(field);
    if (!number) return std::nullopt;
    if (letter.size() != 1) continue;  // cut off behind the number, or within it
    const char unit = Lower(letter[0]);
    if (unit != 'm' && unit != 'f') continue;
    const bool isFathoms = hasBoth ? letter[0] == 'F' : i == Fathoms;
    const std::size_t way = unit == 'm' ? Metres : isFathoms ? Fathoms : Feet;
    numbers[way] = *number;
    ways[way] = WayOf(*number, way == Metres ? 1 : way == Feet ? Foot : Fathom);
  }
  ToldDepth told = {.metres = Unknown, .isFromSurface = isFromSurface};
  if (isEmpty) return told;
  const auto& [feet, metres, fathoms] = ways;
  if (feet.AgreesWith(metres)) {
    told.metres = Finer(metres, feet).metres;
  } else if (metres.AgreesWith(fathoms)) {
    told.metres = Finer(metres, fathoms).metres;
  } else if (feet.isTold && metres.isTold) {
    // Each may stand in the other's place.
    const Way asFeet = WayOf(numbers[Metres], Foot), asMetres = WayOf(numbers[Feet], 1);
    told.metres = asFeet.AgreesWith(asMetres) ? Finer(asMetres, asFeet).metres : metres.metres;
  } else {
    const Way* only = std::find_if(ways.begin(), ways.end(), [](const Way& way) { return way.isTold; });
    if (only == ways.end()) return std::nullopt;
    told.metres = only->metres;
  }
  if (metres.isTold && std::isnan(DepthOrNone(metres.metres))) told.metres = Unknown;
  told.metres = DepthOrNone(told.metres);
  return told;
}

// metres,offset[,range...]
std::optional<ToldDepth> OfTransducer(const NmeaFields& fields) {
  if (fields.Count() < 2) return std::nullopt;  // cut off within the number
  ToldDepth told = {.metres = Unknown};
  const std::optional<FieldNumber> offset = NumberOf(fields[1]);
  if (!offset && !fields[1].empty()) return std::nullopt;
  const double toSurface = offset ? offset->value : 0;
  told.isFromSurface = toSurface > 0 && toSurface < DeepestTransducer;
  if (fields[0].empty()) return told;
  const std::optional<FieldNumber> metres = NumberOf(fields[0]);
  if (!metres) return std::nullopt;
  told.metres = DepthOrNone(metres->value);
  if (told.metres > 0 && told.isFromSurface) told.metres += toSurface;
  return told;
}

// 22<deg> 09.1234' N: degrees, minutes and the hemisphere, whatever the degree sign is.
std::optional<double> SurveyAngle(std::string_view text, char negative, double most) {
  const std::size_t degreesEnd = text.find_first_not_of("0123456789");
  if (degreesEnd == std::string_view::npos) return std::nullopt;
  const std::size_t minutesStart = text.find_first_of("0123456789", degreesEnd);
  const std::size_t minutesEnd = text.find('\'', degreesEnd);
  if (minutesStart == std::string_view::npos || minutesEnd == std::string_view::npos ||
      minutesEnd < minutesStart)
    return std::nullopt;
  const std::optional<FieldNumber> degrees = NumberOf(text.substr(0, degreesEnd));
  const std::optional<FieldNumber> minutes =
      NumberOf(Trimmed(text.substr(minutesStart, minutesEnd - minutesStart)));
  if (!degrees || !minutes || minutes->value >= 60) return std::nullopt;
  const double angle = degrees->value + minutes->value / 60;
  if (angle > most) return std::nullopt;
  return Lower(text.back()) == negative ? -angle : angle;
}

// hh:mm:ss,latitude,longitude,status of the fix,depth,M,status of the depth. The clock stands still in many
// files and has no date: it is of no use.
std::optional<ToldDepth> OfSurvey(const NmeaFields& fields) {
  if (fields.Count() < 7 || Lower(fields[5].empty() ? ' ' : fields[5][0]) != 'm') return std::nullopt;
  ToldDepth told = {.metres = Unknown, .longitude = Unknown, .latitude = Unknown};
  const auto isValid = [](std::string_view status) { return !status.empty() && Lower(status[0]) == 'a'; };
  if (isValid(fields[3])) {
    const std::optional<double> latitude = SurveyAngle(fields[1], 's', 90);
    const std::optional<double> longitude = SurveyAngle(fields[2], 'w', 180);
    if (!latitude || !longitude) return std::nullopt;
    if (*latitude != 0 || *longitude != 0) {
      told.latitude = *latitude;
      told.longitude = *longitude;
    }
  }
  if (fields[4].empty()) return told;
  const std::optional<FieldNumber> metres = NumberOf(fields[4]);
  if (!metres) return std::nullopt;
  if (isValid(fields[6])) told.metres = DepthOrNone(metres->value);
  return told;
}

}  // namespace

double DepthOrNone(double metres) {
  static constexpr std::array<double, 5> none = {999, 999.9, 999.99, 9999, 655.35};
  constexpr double deepest = 12'000;
  const bool isDepth =
      metres >= 0 && metres < deepest && std::find(none.begin(), none.end(), metres) == none.end();
  return isDepth ? metres : Unknown;
}

std::optional<ToldDepth> DepthOf(SentenceKind kind, const NmeaFields& fields) {
  switch (kind) {
    case SentenceKind::Odc:
      return OfSurvey(fields);
    case SentenceKind::Dpt:
      return OfTransducer(fields);
    default:
      return OfThreeUnits(fields, kind == SentenceKind::Dbs);
  }
}

}  // namespace sondrix
