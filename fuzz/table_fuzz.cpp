#include "fuzz/fuzz_run.h"
#include "sounders/common/zone.h"
#include "sounders/table/table_sounder.h"

#include <cmath>

namespace {

using namespace sondrix;

// What the input's first byte asks for.
ReadOptions OptionsOf(std::uint8_t draw) {
  ReadOptions options;
  if ((draw & 1U) != 0) options.columns = {"time", "depth_ft", "lon", "-", "lat", "date", "x", "y"};
  if ((draw & 2U) != 0) options.isZUp = true;
  if ((draw & 4U) != 0) options.channel = 2;
  if ((draw & 8U) != 0) {
    options.toUtc = *ZoneOf("Europe/Berlin");
    options.zoneName = "Europe/Berlin";
  }
  if ((draw & 16U) != 0) {
    options.toDegrees = [](double x, double y, double& longitude, double& latitude) {
      longitude = x / 1e6;
      latitude = y / 1e6;
      return std::fabs(x) < 1e8 && std::fabs(y) < 9e7;
    };
  }
  if ((draw & 32U) != 0) options.isFeet = true;
  return options;
}

void Check(const Sounding& sounding) {
  Require(std::isnan(sounding.longitude) == std::isnan(sounding.latitude), "a place has both its numbers");
  Require(
      !sounding.HasPosition() || (std::fabs(sounding.longitude) <= 180 && std::fabs(sounding.latitude) <= 90),
      "a place is on the globe");
  Require(!sounding.HasTime() || std::fabs(sounding.time) < 1e10, "a time is one of these centuries");
  Require(!std::isinf(sounding.recorded), "a depth is a number or none");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const FuzzBytes text = FuzzBytes(data, size).subspan(1);
  const std::string path = Folder().Of("table");
  {
    OutputFile file(path);
    file.Write(text);
    file.Close();
  }
  const std::size_t length = std::min(text.size(), SourceHead::MaxBytes);
  IsTable({text.first(length), static_cast<std::int64_t>(text.size())});
  Reading reading;
  try {
    ReadTable(path, OptionsOf(data[0]), {}, reading);
  } catch (const CantRead& reason) {
    const std::string_view line = reason.what();
    Require(!line.empty() && line.find('\n') == std::string_view::npos, "a reason is one line", line);
    return 0;
  }
  for (const TripReading& trip : reading.trips)
    for (std::size_t i = 0; i < trip.soundings.size(); ++i) Check(trip.soundings[i]);
  return 0;
}
