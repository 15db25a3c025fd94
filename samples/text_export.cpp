#include "samples/text_export.h"

#include "samples/lake.h"

#include <cmath>
#include <string_view>

namespace sondrix {

namespace {

constexpr std::int64_t Steps = 2000;
constexpr double StepLength = 0.5;  // metres
constexpr int StepMilliseconds = 200;
constexpr double FeetPerMetre = 1 / 0.3048;
constexpr double Knots = 4.86;

constexpr std::int64_t RepeatEvery = 40;
constexpr std::int64_t ZeroEvery = 97;
constexpr std::int64_t BlankEvery = 251;
constexpr std::int64_t GapEvery = 400;
constexpr double GapLength = 60;  // metres
constexpr std::int64_t GapMilliseconds = 90'000;

constexpr std::string_view Names[] = {"Channel",    "Frequency",     "UpperLimit[ft]", "LowerLimit[ft]",
                                      "Offset[ft]", "Depth[ft]",     "Temp[C]",        "WaterSpeed[kn]",
                                      "Speed[kn]",  "Course[deg]",   "Altitude[m]",    "PositionX",
                                      "PositionY",  "TimeOffset[ms]"};

struct Channel {
  std::string_view Name, Frequency;
};
constexpr Channel Channels[] = {{"Primary", "200"}, {"Downscan", "800"}, {"Sidescan", "455"}};
constexpr Channel OnlyChannel = Channels[1];

void AddHead(std::string& text, const TableForm& form, std::string_view lineEnd) {
  for (const std::string_view name : Names) {
    if (name.data() != Names[0].data()) text += form.Separator;
    text += name;
  }
  text += lineEnd;
}

void AddRow(std::string& text, const TableForm& form, const Channel& channel, std::int64_t step) {
  const bool repeats = step % RepeatEvery == RepeatEvery - 1;
  const std::int64_t gaps = step / GapEvery;
  const double way =
      static_cast<double>(repeats ? step - 1 : step) * StepLength + static_cast<double>(gaps) * GapLength;
  const SurveyPoint point = SurveyAt(way);
  const LakePlace place = LakePlaceOf(point.X, point.Y);
  const bool noDepth = step % ZeroEvery == ZeroEvery / 2;
  const char between = form.Separator;

  text += channel.Name;
  (text += between) += channel.Frequency;
  ((text += between) += "0.000000") += between;
  AddFixed(text, 65.616798, 6);
  ((text += between) += "0.000000") += between;
  AddFixed(text, noDepth ? 0 : point.Depth * FeetPerMetre, 6);
  text += between;
  AddFixed(text, 17.5, 2);
  ((text += between) += "0.00") += between;
  AddFixed(text, Knots, 2);
  text += between;
  AddFixed(text, point.Course, 2);
  text += between;
  AddFixed(text, 128, 1);
  text += between;
  AddNumber(text, std::lround(place.MercX));
  text += between;
  AddNumber(text, std::lround(place.MercY));
  text += between;
  AddNumber(text, step * StepMilliseconds + gaps * GapMilliseconds);
}

TextStep Layout(const TableForm& form) {
  return [form](std::string& text, std::int64_t step) {
    const std::string_view lineEnd = form.CrLf ? "\r\n" : "\n";
    if (step == 0) AddHead(text, form, lineEnd);
    for (const Channel& channel : Channels) {
      if (!form.Mixed && channel.Name != OnlyChannel.Name) continue;
      AddRow(text, form, channel, step);
      text += lineEnd;
    }
    if (step % BlankEvery == BlankEvery - 1) text += lineEnd;
  };
}

}  // namespace

std::string TextExport(const TableForm& form) { return StepsText(Layout(form), Steps); }

bool WriteTextExport(const std::string& path, const TableForm& form, std::int64_t bytes) {
  return WriteSteps(path, Layout(form), bytes);
}

}  // namespace sondrix
