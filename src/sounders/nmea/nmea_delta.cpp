#include "sounders/common/iso_time.h"
#include "sounders/nmea/nmea_decoder.h"

#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>

namespace sondrix {

namespace {

using Json = nlohmann::json;

constexpr std::size_t MostJson = 64 * 1024;  // bytes; a longer line is no delta

struct DeltaPath {
  std::string_view path;
  SentenceKind kind;
  std::string_view address;
};
constexpr std::array<DeltaPath, 4> Paths = {{
    {"environment.depth.belowSurface", SentenceKind::Dbs, "JSONDBS"},
    {"environment.depth.belowTransducer", SentenceKind::Dbt, "JSONDBT"},
    {"environment.depth.belowKeel", SentenceKind::Dbk, "JSONDBK"},
    {"navigation.position", SentenceKind::Gll, "JSONGLL"},
}};

// The member of an object, null where there is none.
const Json* MemberOf(const Json& object, const char* name) {
  if (!object.is_object()) return nullptr;
  const auto found = object.find(name);
  return found == object.end() ? nullptr : &*found;
}

std::string TextOf(const Json& object, const char* name) {
  const Json* member = MemberOf(object, name);
  return member != nullptr && member->is_string() ? member->get<std::string>() : std::string();
}

double NumberOf(const Json* value) {
  return value != nullptr && value->is_number() ? value->get<double>() : Unknown;
}

LoggerTime TimeOf(const Json& update, const LoggerTime& logged) {
  const std::string text = TextOf(update, "timestamp");
  std::string_view rest = text;
  const std::optional<IsoTime> time = TakeIsoTime(rest);
  if (!time) return logged;
  return Dated({.clock = LoggerTime::Clock::Absolute, .seconds = time->seconds, .isFine = time->hasDecimals});
}

// False where a value can't be understood; null is one that isn't known.
bool ReadValue(const Json& value, NmeaEvent& event) {
  if (IsDepth(event.kind)) {
    event.depth.metres = DepthOrNone(NumberOf(&value));
    event.depth.isFromSurface = event.kind == SentenceKind::Dbs;
    return value.is_number() || value.is_null();
  }
  if (value.is_null()) return true;
  const double latitude = NumberOf(MemberOf(value, "latitude"));
  const double longitude = NumberOf(MemberOf(value, "longitude"));
  if (!(std::abs(latitude) <= 90 && std::abs(longitude) <= 180)) return false;
  if (latitude == 0 && longitude == 0) return true;
  event.fix.latitude = latitude;
  event.fix.longitude = longitude;
  return true;
}

// "vessels.self" and "vessels." before an identity say nothing of it.
std::string_view Identity(std::string_view context) {
  constexpr std::string_view vessels = "vessels.";
  if (context.substr(0, vessels.size()) == vessels) context.remove_prefix(vessels.size());
  return context == "self" ? std::string_view() : context;
}

}  // namespace

bool DeltaVessel::IsOwn(std::string_view context) const {
  const std::string_view identity = Identity(context);
  return identity.empty() || identity == Identity(own.empty() ? sounding : own);
}

bool AddDeltaEvents(std::string_view json, const LoggerTime& logged, DeltaVessel& vessel,
                    std::vector<NmeaEvent>& events) {
  if (json.size() > MostJson) return false;
  while (!json.empty() && json.back() != '}') json.remove_suffix(1);
  const Json delta = Json::parse(json, nullptr, false);
  if (!delta.is_object()) return false;
  if (const std::string own = TextOf(delta, "self"); !own.empty()) vessel.own = own;
  const Json* updates = MemberOf(delta, "updates");
  if (updates == nullptr || !updates->is_array()) return true;
  const std::string context = TextOf(delta, "context");
  const std::size_t first = events.size();
  bool isUnderstood = true;
  for (const Json& update : *updates) {
    const Json* values = MemberOf(update, "values");
    if (values == nullptr || !values->is_array()) continue;
    const LoggerTime time = TimeOf(update, logged);
    for (const Json& entry : *values) {
      const std::string path = TextOf(entry, "path");
      const Json* value = MemberOf(entry, "value");
      for (const DeltaPath& known : Paths) {
        if (path != known.path || value == nullptr) continue;
        NmeaEvent event = {.kind = known.kind, .address = KeyOf(known.address), .logged = time};
        if (!ReadValue(*value, event)) {
          isUnderstood = false;
          continue;
        }
        if (IsDepth(known.kind) && vessel.sounding.empty()) vessel.sounding = context;
        events.push_back(event);
      }
    }
  }
  if (!vessel.IsOwn(context)) events.resize(first);
  return isUnderstood;
}

}  // namespace sondrix
