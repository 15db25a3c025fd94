#include "samples/three_column.h"

#include "samples/lake.h"

#include <string_view>

namespace sondrix {

namespace {

constexpr std::int64_t Steps = 600;
constexpr double StepLength = 1.5;  // metres
constexpr std::int64_t TwiceEvery = 75;
constexpr std::int64_t GapEvery = 250;
constexpr double GapLength = 70;  // metres

void AddRow(std::string& text, const TableForm& form, std::int64_t step) {
  const std::int64_t gaps = step / GapEvery;
  const double gap = static_cast<double>(gaps) * GapLength;
  const std::int64_t at = step % TwiceEvery == TwiceEvery - 1 ? step - 1 : step;
  const SurveyPoint point = SurveyAt(static_cast<double>(at) * StepLength + gap);
  const LakePlace place = LakePlaceOf(point.X, point.Y);
  AddFixed(text, place.Lat, 6);
  text += form.Separator;
  AddFixed(text, place.Lon, 6);
  text += form.Separator;
  AddFixed(text, point.Depth, static_cast<int>(step % 3));
}

}  // namespace

std::string ThreeColumn(const TableForm& form) {
  const std::string_view lineEnd = form.CrLf ? "\r\n" : "\n";
  std::string text("latitude");
  ((((text += form.Separator) += "longitude") += form.Separator) += "depth") += lineEnd;
  for (std::int64_t step = 0; step < Steps; ++step) {
    AddRow(text, form, step);
    text += lineEnd;
  }
  return text += lineEnd;
}

}  // namespace sondrix
