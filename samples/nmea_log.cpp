#include "samples/nmea_log.h"

#include "samples/lake.h"
#include "samples/text_steps.h"

#include <chrono>
#include <cmath>
#include <string_view>

namespace sondrix {

namespace {

constexpr std::int64_t Steps = 900;
constexpr double StepLength = 2.5;                 // metres a second
constexpr std::int64_t StartTime = 1'464'184'800;  // 2016-05-25 14:00:00
constexpr double FeetPerMetre = 1 / 0.3048;
constexpr double Knots = 4.86;

constexpr std::int64_t ColdSteps = 4;
constexpr std::int64_t FewEvery = 60;   // seconds; few satellites for three of them
constexpr std::int64_t LostEvery = 90;  // seconds; no fix for four of them
constexpr std::int64_t EmptyEvery = 45;
constexpr std::int64_t ZeroEvery = 110;
constexpr std::int64_t GapEvery = 200;
constexpr double GapLength = 60;  // metres
constexpr std::int64_t GapSeconds = 90;

struct Second {
  std::int64_t Step = 0;
  std::int64_t Time = 0;  // seconds since 1970
  SurveyPoint Point;
  LakePlace Place;
  bool HasPosition = false;
  bool HasFix = false;
  int Satellites = 0;
};

Second SecondOf(std::int64_t step) {
  Second second;
  second.Step = step;
  const std::int64_t gaps = step / GapEvery;
  second.Time = StartTime + step + gaps * GapSeconds;
  second.Point = SurveyAt(static_cast<double>(step) * StepLength + static_cast<double>(gaps) * GapLength);
  second.Place = LakePlaceOf(second.Point.X, second.Point.Y);
  second.HasPosition = step >= ColdSteps;
  second.HasFix = second.HasPosition && step % LostEvery / 4 != 50 / 4;
  second.Satellites = !second.HasFix ? 0 : step % FewEvery / 3 == 7 ? 4 + static_cast<int>(step % 2) : 9;
  return second;
}

void AddTime(std::string& text, std::int64_t time) {
  const std::int64_t inDay = time % 86'400;
  AddDigits(text, inDay / 3600 * 10'000 + inDay / 60 % 60 * 100 + inDay % 60, 6);
}

void AddDate(std::string& text, std::int64_t time) {
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{time / 86'400}}};
  AddDigits(text, static_cast<unsigned>(date.day()), 2);
  AddDigits(text, static_cast<unsigned>(date.month()), 2);
  AddDigits(text, static_cast<int>(date.year()) % 100, 2);
}

// Degrees and minutes with four decimals, worked out in ten-thousandths of a minute so that no minute is 60.
void AddAngle(std::string& text, double degrees, std::size_t digits) {
  const std::int64_t minutes = std::llround(degrees * 60 * 10'000);
  AddDigits(text, minutes / 600'000, digits);
  AddDigits(text, minutes % 600'000 / 10'000, 2);
  text += '.';
  AddDigits(text, minutes % 10'000, 4);
}

void AddPosition(std::string& text, const Second& second) {
  if (!second.HasPosition) {
    text += ",,,";
    return;
  }
  AddAngle(text, second.Place.Lat, 2);
  text += ",N,";
  AddAngle(text, second.Place.Lon, 3);
  text += ",E";
}

// Closes the sentence that begins at start by its checksum.
void Close(std::string& text, std::size_t start) {
  unsigned sum = 0;
  for (std::size_t i = start + 1; i < text.size(); ++i) sum ^= static_cast<unsigned char>(text[i]);
  constexpr std::string_view digits = "0123456789ABCDEF";
  text += '*';
  text += digits[sum >> 4];
  text += digits[sum & 15];
  text += "\r\n";
}

void AddSentence(std::string& text, std::string_view sentence) {
  const std::size_t start = text.size();
  text += sentence;
  Close(text, start);
}

void AddRmc(std::string& text, const Second& second) {
  const std::size_t start = text.size();
  text += "$GPRMC,";
  AddTime(text, second.Time);
  text += second.HasFix ? ",A," : ",V,";
  AddPosition(text, second);
  text += ',';
  AddFixed(text, Knots, 1);
  text += ',';
  AddFixed(text, second.Point.Course, 1);
  text += ',';
  AddDate(text, second.Time);
  text += second.HasFix ? ",,,A" : ",,,N";
  Close(text, start);
}

void AddGga(std::string& text, const Second& second) {
  const std::size_t start = text.size();
  text += "$GPGGA,";
  AddTime(text, second.Time);
  text += ',';
  AddPosition(text, second);
  text += second.HasFix ? ",1," : ",0,";
  AddDigits(text, second.Satellites, 2);
  text += second.HasFix ? ",0.9,128.0,M,15.0,M,," : ",,,M,,M,,";
  Close(text, start);
}

void AddDbt(std::string& text, const Second& second) {
  if (second.Step % EmptyEvery == 30) return AddSentence(text, "$SDDBT,,f,,M,,F");
  const std::size_t start = text.size();
  const double depth = second.Step % ZeroEvery == 70 ? 0 : second.Point.Depth;
  text += "$SDDBT,";
  AddFixed(text, depth * FeetPerMetre, 2);
  text += ",f,";
  AddFixed(text, depth, 2);
  text += ",M,";
  AddFixed(text, depth / 1.8288, 2);
  text += ",F";
  Close(text, start);
}

void AddSecond(std::string& text, std::int64_t step) {
  const Second second = SecondOf(step);
  AddRmc(text, second);
  AddGga(text, second);
  AddSentence(text, "$GPGSA,A,3,02,05,10,13,16,21,25,29,31,,,,1.7,0.9,1.4");
  AddDbt(text, second);
  AddSentence(text, "$SDMTW,17.5,C");
  if (step % 5 == 0) AddSentence(text, "$GPGSV,3,1,09,02,10,039,35,05,15,069,38,10,05,017,31,13,05,348,30");
}

}  // namespace

std::string NmeaLog() { return StepsText(AddSecond, Steps); }

bool WriteNmeaLog(const std::string& path, std::int64_t bytes) { return WriteSteps(path, AddSecond, bytes); }

}  // namespace sondrix
