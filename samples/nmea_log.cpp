#include "samples/nmea_log.h"

#include "samples/lake.h"
#include "samples/nmea_text.h"
#include "samples/text_steps.h"

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

void AddPosition(std::string& text, const Second& second) {
  if (!second.HasPosition) {
    text += ",,,";
    return;
  }
  AddNmeaAngle(text, second.Place.Lat, 2, 4);
  text += ",N,";
  AddNmeaAngle(text, second.Place.Lon, 3, 4);
  text += ",E";
}

void AddSentence(std::string& text, std::string_view sentence) {
  const std::size_t start = text.size();
  text += sentence;
  CloseNmea(text, start);
}

void AddRmc(std::string& text, const Second& second) {
  const std::size_t start = text.size();
  text += "$GPRMC,";
  AddNmeaTime(text, second.Time);
  text += second.HasFix ? ",A," : ",V,";
  AddPosition(text, second);
  text += ',';
  AddFixed(text, Knots, 1);
  text += ',';
  AddFixed(text, second.Point.Course, 1);
  text += ',';
  AddNmeaDate(text, second.Time);
  text += second.HasFix ? ",,,A" : ",,,N";
  CloseNmea(text, start);
}

void AddGga(std::string& text, const Second& second) {
  const std::size_t start = text.size();
  text += "$GPGGA,";
  AddNmeaTime(text, second.Time);
  text += ',';
  AddPosition(text, second);
  text += second.HasFix ? ",1," : ",0,";
  AddDigits(text, second.Satellites, 2);
  text += second.HasFix ? ",0.9,128.0,M,15.0,M,," : ",,,M,,M,,";
  CloseNmea(text, start);
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
  CloseNmea(text, start);
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
