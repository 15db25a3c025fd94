#include "app/chart/chart_lines.h"

#include "app/chart/chart_run.h"
#include "app/chart/lines.h"
#include "exports/row_text.h"

#include <algorithm>
#include <cmath>

namespace sondrix {
namespace {

std::string FarText(const FarSoundings& far, const ChartRun& run) {
  constexpr double step = 10'000;  // metres; it isn't known better
  const bool isOne = far.count == 1;
  return (far.isAll && !isOne ? "all " : "") + CountedThings(far.count, "sounding") + " of " +
         run.survey.trips[far.trip].name + (isOne ? " lies some " : " lie some ") +
         std::to_string(10 * std::lround(far.distance / step)) +
         " km from the others: " + (isOne ? "it isn't" : "they aren't") + " in the chart";
}

std::string GridText(const ChartResult& chart) {
  const GridShape& shape = chart.made.model.shape;
  const ModelAccount& account = chart.made.account;
  std::string text =
      "grid in " + chart.crs + ": " + CountedThings(static_cast<std::uint64_t>(shape.columns), "column") +
      ", " + CountedThings(static_cast<std::uint64_t>(shape.rows), "row") + " of " +
      NumberText(shape.cell, 3) + " m, up to " + NumberText(account.reach, 2) + " m from soundings";
  if (account.lines > 1 && account.lineSpacing > 0)
    text += "; lines are " + NumberText(account.lineSpacing, 1) + " m apart";
  return text;
}

std::string MethodText(const ModelAccount& account) {
  if (std::isnan(account.leftOutError))
    return account.method + "; there are no lines to leave out and predict";
  return account.method + "; it predicts stretches of " + CountedThings(account.lines, "line") +
         " that were left out to " + NumberText(account.leftOutError, 3) + " m (root mean square)";
}

std::string ContoursText(const ChartRun& run) {
  const ChartResult& chart = run.chart;
  const ModelChoice& choice = run.options.model;
  const auto depth = [&choice](double metres) { return NumberText(choice.InUnit(metres), 2); };
  const std::string unit = " " + std::string(choice.UnitName());
  const std::string deepest = "; the deepest cell has " + depth(DeepestOf(chart.made.model)) + unit;
  if (chart.depths.empty()) return "no contours" + deepest;
  std::string depths = depth(chart.depths.front());
  if (chart.depths.size() > 1) depths += " to " + depth(chart.depths.back());
  std::string text = CountedThings(chart.contours.lines.size(), "contour") + " of " +
                     CountedThings(chart.depths.size(), "depth") + ", " + depths + unit + ", and " +
                     CountedThings(chart.contours.areas.size(), "area") + deepest;
  if (chart.isStepCoarser) text += "; the step is too fine, so some depths are passed over";
  return text;
}

}  // namespace

std::string NumberText(double value, int decimals) {
  char text[NumberRoom];
  return {text, PutNumber(text, value, decimals, true)};
}

std::vector<std::string> ChartSentences(const ChartRun& run) {
  std::vector<std::string> sentences;
  for (const FarSoundings& far : run.chart.far) sentences.push_back(FarText(far, run));
  if (!run.chart.isMade) return sentences;
  sentences.push_back(GridText(run.chart));
  sentences.push_back(MethodText(run.chart.made.account));
  sentences.push_back(ContoursText(run));
  return sentences;
}

}  // namespace sondrix
