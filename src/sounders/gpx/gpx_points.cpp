#include "sounders/gpx/gpx_points.h"

#include "core/text.h"
#include "sounders/common/calendar.h"
#include "sounders/common/iso_time.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace sondrix {

namespace {

constexpr std::size_t MostText = 64;  // bytes of a time or a depth
constexpr std::string_view Blanks = " \t\r\n";

std::string_view LocalName(std::string_view name) {
  const std::size_t colon = name.rfind(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

// other: in small letters.
bool IsName(std::string_view name, std::string_view other) {
  return std::equal(name.begin(), name.end(), other.begin(), other.end(),
                    [](char a, char b) { return Lower(a) == b; });
}

std::optional<double> NumberOf(std::string_view text) {
  text = Trimmed(text, Blanks);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  double value = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || stop != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

void GpxPoints::Open(std::string_view name, const char* const* attributes) {
  ++level_;
  const std::string_view local = LocalName(name);
  if (pointLevel_ == 0) {
    const bool isAlone = IsName(local, "wpt");
    if (isAlone || IsName(local, "trkpt") || IsName(local, "rtept")) {
      OpenPoint(attributes, isAlone);
    } else if (IsName(local, "trkseg") || IsName(local, "trk") || IsName(local, "rte")) {
      begins_ = true;
    }
    return;
  }
  if (IsName(local, "depth") && !hasDepth_) {
    collects_ = Collects::Depth;
    text_.clear();
  } else if (IsName(local, "time") && level_ == pointLevel_ + 1) {
    collects_ = Collects::Time;
    text_.clear();
  }
}

void GpxPoints::OpenPoint(const char* const* attributes, bool isAlone) {
  pointLevel_ = level_;
  ++points_;
  if (isAlone != wasAlone_) begins_ = true;
  wasAlone_ = isAlone;
  point_ = Sounding();
  hasDepth_ = false;
  std::optional<double> latitude, longitude;
  for (; *attributes != nullptr; attributes += 2) {
    const std::string_view name = LocalName(attributes[0]);
    if (IsName(name, "lat")) latitude = NumberOf(attributes[1]);
    if (IsName(name, "lon")) longitude = NumberOf(attributes[1]);
  }
  isBad_ = !latitude || !longitude || !(std::abs(*latitude) <= 90) || !(std::abs(*longitude) <= 180);
  if (isBad_ || (*latitude == 0 && *longitude == 0)) return;
  point_.latitude = KeptDegrees(*latitude);
  point_.longitude = KeptDegrees(*longitude);
}

void GpxPoints::Text(std::string_view text) {
  if (collects_ != Collects::Nothing && text_.size() < MostText) text_ += text.substr(0, MostText);
}

void GpxPoints::Close(std::string_view) {
  if (level_ == pointLevel_ && pointLevel_ != 0) ClosePoint();
  if (collects_ == Collects::Time) ReadTime();
  if (collects_ == Collects::Depth) ReadDepth();
  collects_ = Collects::Nothing;
  if (level_ > 0) --level_;
}

void GpxPoints::ReadTime() {
  std::string_view text = Trimmed(text_, Blanks);
  const std::optional<IsoTime> time = TakeIsoTime(text);
  if (!time) return;  // a point without a time is one
  double seconds = time->seconds;
  if (!time->hasZone) {
    assumedZone_ = true;
    if (options_.toUtc) seconds = options_.toUtc(seconds);
  }
  if (seconds < FirstDate) {
    ++unsetTimes_;
    return;
  }
  point_.time = KeptSeconds(seconds);
}

void GpxPoints::ReadDepth() {
  const std::string_view text = Trimmed(text_, Blanks);
  hasDepth_ = true;
  if (text.empty()) {
    point_.recorded = static_cast<float>(Unknown);
    return;
  }
  const std::optional<double> metres = NumberOf(text);
  constexpr double most = 1e6;  // no place is that deep, and it is told from what isn't finite
  if (!metres || std::abs(*metres) > most) {
    isBad_ = true;
    return;
  }
  point_.recorded = KeptMetres(*metres);
}

void GpxPoints::ClosePoint() {
  pointLevel_ = 0;
  if (isBad_) return reading_.PassOver(PassedOver::BadRows);
  if (!hasDepth_) return reading_.PassOver(PassedOver::NoDepth);
  point_.depth = point_.recorded;
  point_.beginsLine = begins_;
  begins_ = false;
  if (point_.recorded < 0) ++below_;
  if (point_.recorded > 0) ++above_;
  soundings_.Add(point_);
}

void GpxPoints::Drop() {
  collects_ = Collects::Nothing;
  level_ = pointLevel_ = 0;
}

void GpxPoints::Finish(const std::string& damage) {
  if (soundings_.empty()) {
    if (!damage.empty()) throw CantRead("damaged XML, " + damage);
    throw CantRead(points_ == 0 ? "no points in it" : "no point with a depth");
  }
  if (!damage.empty()) reading_.remarks.push_back("damaged XML, " + damage);
  if (below_ > 0 && above_ == 0) {
    for (std::size_t i = 0; i < soundings_.size(); ++i) {
      Sounding& sounding = soundings_[i];
      sounding.depth = sounding.recorded = 0 - sounding.recorded;
    }
    reading_.takenFor.emplace_back("depths: all below 0, taken for heights");
  }
  if (unsetTimes_ > 0) reading_.remarks.push_back(std::to_string(unsetTimes_) + std::string(BeforeFirstDate));
  if (assumedZone_)
    reading_.takenFor.push_back("times: " + (options_.zoneName.empty() ? "UTC assumed" : options_.zoneName));
}

}  // namespace sondrix
