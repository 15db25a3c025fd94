#include "samples/trip_files.h"

#include "samples/chart_lake.h"
#include "samples/echogram.h"
#include "samples/nmea_text.h"
#include "samples/text_steps.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <numbers>
#include <string_view>
#include <system_error>

namespace sondrix {

namespace {

constexpr double Pi = std::numbers::pi;
constexpr double FeetPerMetre = 1 / 0.3048;
constexpr double KnotsPerMetreSecond = 1 / 0.514444;
constexpr double MercatorRadius = 6356752.31424518;  // metres

std::int64_t MillisecondsOf(const TrueSounding& sounding) { return std::llround(1000 * sounding.At.Time); }
std::int64_t SecondsOf(const ChartTrip& trip, const TrueSounding& sounding) {
  return trip.Start + static_cast<std::int64_t>(std::floor(sounding.At.Time));
}

bool HasFix(const TrueSounding& sounding) { return !std::isnan(sounding.FixX); }

GlobePlace FixOf(const TrueSounding& sounding) {
  return HasFix(sounding) ? ChartLakeGlobe(sounding.FixX, sounding.FixY) : GlobePlace{};
}

// Radians clockwise from the globe's north, 0 to 2 pi.
double CourseOf(const TrueSounding& sounding) {
  const double course =
      sounding.At.Course + UtmConvergence(ChartLakeGlobe(sounding.At.X, sounding.At.Y), ChartLakeZone);
  return course - 2 * Pi * std::floor(course / (2 * Pi));
}

void AddDay(std::string& text, std::int64_t seconds) {
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{seconds / 86'400}}};
  AddDigits(text, static_cast<int>(date.year()), 4);
  text += '-';
  AddDigits(text, static_cast<unsigned>(date.month()), 2);
  text += '-';
  AddDigits(text, static_cast<unsigned>(date.day()), 2);
}

void AddClock(std::string& text, std::int64_t seconds) {
  AddDigits(text, seconds % 86'400 / 3600, 2);
  text += ':';
  AddDigits(text, seconds % 3600 / 60, 2);
  text += ':';
  AddDigits(text, seconds % 60, 2);
}

// Few samples keep the file small: the echo alone.
void AddFrames(const ChartTrip& trip, const TrueSounding& sounding, bool isFirst, EchogramWriter& writer,
               std::vector<std::uint8_t>& bytes) {
  constexpr float limit = static_cast<float>(25 * FeetPerMetre);
  constexpr std::size_t samples = 16;
  constexpr std::uint8_t depthBit = 0x08;  // of the validity bits
  const bool isSl3 = trip.Form == TripForm::Sl3;
  const auto depth = static_cast<float>(sounding.Told * FeetPerMetre);
  const RecorderPlace place = RecorderPlaceOf(sounding);
  for (const int channel : {0, 2}) {
    SampleFrame frame = Frame(channel, depth, place.X, place.Y, samples);
    frame.LowerLimit = limit;
    const auto row = static_cast<std::size_t>(std::max(0.0F, depth) / limit * samples);
    frame.Samples.assign(samples, 10);
    if (row < samples) frame.Samples[row] = 220;
    if (isSl3 && channel == 2) frame.WaterDepth = 0;
    frame.Speed = static_cast<float>(sounding.At.Speed * KnotsPerMetreSecond);
    frame.Course = static_cast<float>(CourseOf(sounding));
    frame.Heading = 0;
    frame.TimeOffset = static_cast<std::int32_t>(MillisecondsOf(sounding) + 2 * channel);
    frame.TimeBase = isFirst ? static_cast<std::int32_t>(trip.Start) : *frame.TimeOffset;
    const std::size_t start = bytes.size();
    writer.Add(frame, bytes);
    if (frame.WaterDepth == 0) bytes[start + (isSl3 ? 0x74 : 0x84)] &= static_cast<std::uint8_t>(~depthBit);
  }
}

std::vector<std::uint8_t> Recording(const ChartTrip& trip) {
  std::vector<std::uint8_t> bytes;
  EchogramWriter writer(trip.Form == TripForm::Sl3 ? 3 : 2);
  writer.Start(bytes);
  for (const TrueSounding& sounding : trip.Soundings) {
    AddFrames(trip, sounding, &sounding == trip.Soundings.data(), writer, bytes);
  }
  return bytes;
}

void AddNmeaPosition(std::string& text, const TrueSounding& sounding) {
  if (!HasFix(sounding)) {
    text += ",,,";
    return;
  }
  const GlobePlace place = FixOf(sounding);
  AddNmeaAngle(text, place.Lat, 2, 5);
  text += ",N,";
  AddNmeaAngle(text, place.Lon, 3, 5);
  text += ",E";
}

// A fix each second, the depths at their own pace.
void AddSentences(std::string& text, const ChartTrip& trip, const TrueSounding& sounding) {
  const std::int64_t time = SecondsOf(trip, sounding);
  if (MillisecondsOf(sounding) % 1000 == 0) {
    const std::size_t rmc = text.size();
    text += "$GNRMC,";
    AddNmeaTime(text, time);
    text += HasFix(sounding) ? ".00,A," : ".00,V,";
    AddNmeaPosition(text, sounding);
    text += ',';
    AddFixed(text, sounding.At.Speed * KnotsPerMetreSecond, 1);
    text += ',';
    AddFixed(text, CourseOf(sounding) * 180 / Pi, 1);
    text += ',';
    AddNmeaDate(text, time);
    text += HasFix(sounding) ? ",,,A" : ",,,N";
    CloseNmea(text, rmc);

    const std::size_t gga = text.size();
    text += "$GNGGA,";
    AddNmeaTime(text, time);
    text += ".00,";
    AddNmeaPosition(text, sounding);
    text += HasFix(sounding) ? ",1,09,0.9,131.0,M,15.0,M,," : ",0,00,,,M,,M,,";
    CloseNmea(text, gga);
  }
  const std::size_t dbt = text.size();
  text += "$SDDBT,";
  if (sounding.Told > 0) AddFixed(text, sounding.Told * FeetPerMetre, 1);
  text += ",f,";
  if (sounding.Told > 0) AddFixed(text, sounding.Told, 1);
  text += ",M,";
  if (sounding.Told > 0) AddFixed(text, sounding.Told / 1.8288, 1);
  text += ",F";
  CloseNmea(text, dbt);
}

// The app keeps its places as 32-bit floats and writes them as 64-bit ones.
void AddShort(std::string& text, double degrees) {
  char digits[32];
  const double kept = static_cast<float>(degrees);
  const auto result = std::to_chars(digits, digits + sizeof digits, kept);
  text.append(digits, result.ptr);
  if (kept == 0) text += ".0";
}

void AddAppRow(std::string& text, const ChartTrip& trip, const TrueSounding& sounding) {
  const GlobePlace place = FixOf(sounding);
  AddShort(text, place.Lat);
  text += ',';
  AddShort(text, place.Lon);
  text += ',';
  AddFixed(text, sounding.Told, 3);
  text += ",18.5,";
  AddNumber(text, 1000 * trip.Start + MillisecondsOf(sounding));
  text += '\n';
}

void AddFeetRow(std::string& text, const ChartTrip& trip, const TrueSounding& sounding) {
  const std::int64_t time = SecondsOf(trip, sounding);
  const GlobePlace place = FixOf(sounding);
  AddDay(text, time);
  text += ',';
  AddClock(text, time);
  text += ',';
  AddFixed(text, place.Lat, 6);
  text += ',';
  AddFixed(text, place.Lon, 6);
  text += ',';
  AddFixed(text, sounding.Told * FeetPerMetre, 1);
  text += ",16.0\r\n";
}

void AddTrackPoint(std::string& text, const ChartTrip& trip, const TrueSounding& sounding) {
  const GlobePlace place = FixOf(sounding);
  if (sounding.At.BeginsLine) text += "  </trkseg>\n  <trkseg>\n";
  text += "   <trkpt lat=\"";
  AddFixed(text, place.Lat, 7);
  text += "\" lon=\"";
  AddFixed(text, place.Lon, 7);
  text += "\"><time>";
  AddDay(text, SecondsOf(trip, sounding));
  text += 'T';
  AddClock(text, SecondsOf(trip, sounding));
  text += "Z</time><extensions><gpxtpx:TrackPointExtension><gpxtpx:depth>";
  AddFixed(text, sounding.Told, 2);
  text += "</gpxtpx:depth></gpxtpx:TrackPointExtension></extensions></trkpt>\n";
}

// Without the zeros at its end.
void AddTrimmed(std::string& text, double number, int decimals) {
  AddFixed(text, number, decimals);
  text.resize(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
}

void AddConverterRow(std::string& text, const ChartTrip& trip, const TrueSounding& sounding) {
  const RecorderPlace place = RecorderPlaceOf(sounding);
  AddTrimmed(text, (2 * std::atan(std::exp(place.Y / MercatorRadius)) - Pi / 2) * 180 / Pi, 9);
  text += ',';
  AddTrimmed(text, place.X / MercatorRadius * 180 / Pi, 9);
  text += ',';
  AddTrimmed(text, sounding.Told, 2);
  text += ',';
  AddDay(text, SecondsOf(trip, sounding));
  text += 'T';
  AddClock(text, SecondsOf(trip, sounding));
  text += "\r\n";
}

struct TextForm {
  TripForm Form;
  std::string_view Head;
  void (*Add)(std::string& text, const ChartTrip& trip, const TrueSounding& sounding);
  std::string_view Foot;
};
constexpr TextForm TextForms[] = {
    {TripForm::NmeaLog, "", AddSentences, ""},
    {TripForm::AppTable, "", AddAppRow, ""},
    {TripForm::FeetTable, "Date,Time,Latitude,Longitude,Depth (ft),Water temp (C)\r\n", AddFeetRow, ""},
    {TripForm::Gpx,
     "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx version=\"1.1\" creator=\"plotter\" "
     "xmlns=\"http://www.topografix.com/GPX/1/1\" "
     "xmlns:gpxtpx=\"http://www.garmin.com/xmlschemas/TrackPointExtension/v1\">\n <trk>\n  <trkseg>\n",
     AddTrackPoint, "  </trkseg>\n </trk>\n</gpx>\n"},
    {TripForm::ConverterTable, "", AddConverterRow, "\r\n"},
};

}  // namespace

std::vector<std::uint8_t> TripBytes(const ChartTrip& trip) {
  const auto* form = std::ranges::find(TextForms, trip.Form, &TextForm::Form);
  if (form == std::end(TextForms)) return Recording(trip);
  std::string text(form->Head);
  for (const TrueSounding& sounding : trip.Soundings) form->Add(text, trip, sounding);
  text += form->Foot;
  return {text.begin(), text.end()};
}

bool WriteChartTrips(const std::string& folder, std::uint32_t seed) {
  const std::filesystem::path target(std::u8string(folder.begin(), folder.end()));
  std::error_code error;
  std::filesystem::create_directories(target, error);
  const std::string_view between = folder.ends_with('/') ? "" : "/";
  return std::ranges::all_of(ChartTrips(seed), [&](const ChartTrip& trip) {
    return WriteBytes(folder + std::string(between) + trip.File, TripBytes(trip));
  });
}

}  // namespace sondrix
