#include "app/chart/report.h"

#include "app/chart/assemble.h"
#include "app/chart/chart_run.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <vector>

namespace sondrix {
namespace {

using Json = nlohmann::ordered_json;

Json NumberOrNull(double value) { return std::isnan(value) ? Json() : Json(value); }

// To a millimetre, as depths are.
Json MetresOrNull(double metres) { return NumberOrNull(std::round(metres * 1e3) / 1e3); }

Json TextOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

void AddAccount(const TripAccount& account, Json& object) {
  Json fates = Json::object();
  std::uint64_t soundings = 0;
  for (std::size_t i = 0; i < account.fates.size(); ++i) {
    fates[std::string(NameOf(static_cast<Fate>(i)))] = account.fates[i];
    soundings += account.fates[i];
  }
  object["soundings"] = soundings;
  object["fates"] = std::move(fates);
  object["from"] = NumberOrNull(account.times.from);
  object["to"] = NumberOrNull(account.times.to);
}

Json NumberOrNull(const std::optional<double>& value) { return value ? Json(*value) : Json(); }

// In the unit of the contours.
Json DepthList(std::span<const double> depths, const ModelChoice& choice) {
  Json list = Json::array();
  for (const double depth : depths) list.push_back(choice.InUnit(depth));
  return list;
}

Json ContoursAskedFor(const ModelChoice& choice) {
  if (!choice.contours.list.empty()) return DepthList(choice.contours.list, choice);
  return choice.contours.step > 0 ? DepthList(std::span(&choice.contours.step, 1), choice)[0] : Json("auto");
}

Json OptionsObject(const ChartOptions& options) {
  Json columns = Json::array();
  for (const std::string& name : options.columns) columns.push_back(name);
  return {{"columns", std::move(columns)},
          {"source_crs", TextOrNull(options.sourceCrs)},
          {"source_units", options.isFeet ? Json(*options.isFeet ? "ft" : "m") : Json()},
          {"z_up", options.isZUp},
          {"zone", TextOrNull(options.zone)},
          {"channel", options.channel ? Json(std::to_string(*options.channel)) : Json("auto")},
          {"offset_right", options.offsetRight},
          {"offset_ahead", options.offsetAhead},
          {"draft", options.draft},
          {"clean", options.cleans ? "on" : "off"},
          {"level", "none"},
          {"method", NameOf(options.model.method)},
          {"tension", NumberOrNull(options.model.tension)},
          {"shore", TextOrNull(options.model.shore)},
          {"crs", options.crs.empty() ? "auto" : options.crs},
          {"cell", NumberOrNull(options.model.cell)},
          {"reach", NumberOrNull(options.model.reach)},
          {"contours", ContoursAskedFor(options.model)},
          {"units", options.model.UnitName()}};
}

Json FarList(const ChartRun& run) {
  Json list = Json::array();
  for (const FarSoundings& far : run.chart.far) {
    list.push_back({{"trip", run.survey.trips[far.trip].name},
                    {"soundings", far.count},
                    {"distance", std::round(far.distance)}});
  }
  return list;
}

// The grid and what came of it, metres but for the contours' depths.
Json ChartObject(const ChartRun& run) {
  const ChartResult& chart = run.chart;
  Json object = {
      {"crs", TextOrNull(chart.crs)}, {"far", FarList(run)}, {"problem", TextOrNull(chart.problem)}};
  if (!chart.isMade) return object;
  const DepthModel& model = chart.made.model;
  const ModelAccount& account = chart.made.account;
  const auto cells =
      std::count_if(model.depth.begin(), model.depth.end(), [](float depth) { return !std::isnan(depth); });
  object["grid"] = {{"west", model.shape.west}, {"north", model.shape.north},
                    {"cell", model.shape.cell}, {"columns", model.shape.columns},
                    {"rows", model.shape.rows}, {"reach", MetresOrNull(account.reach)},
                    {"cells", cells},           {"deepest", MetresOrNull(DeepestOf(model))}};
  object["soundings"] = {{"used", account.soundings},
                         {"thinned", account.thinned},
                         {"lines", account.lines},
                         {"line_spacing", MetresOrNull(account.lineSpacing)}};
  object["method"] = {{"chosen", account.method},
                      {"members", account.members},
                      {"left_out_error", MetresOrNull(account.leftOutError)},
                      {"left_out_soundings", account.leftOut}};
  object["contours"] = {{"unit", run.options.model.UnitName()},
                        {"depths", DepthList(chart.depths, run.options.model)},
                        {"lines", chart.contours.lines.size()},
                        {"areas", chart.contours.areas.size()}};
  return object;
}

Json SourceObject(const SourceAccount& source, const ChartRun& run) {
  Json object = {{"path", source.source.path}, {"kind", TextOrNull(source.kind)}, {"read", source.soundings}};
  AddAccount(AccountOf(source, run), object);
  Json leftOut = Json::array();
  for (const LeftOutTrip& trip : source.leftOut) {
    leftOut.push_back({{"trip", trip.name}, {"soundings", trip.soundings}, {"reason", trip.words}});
  }
  object["left_out"] = std::move(leftOut);
  object["taken_for"] = source.takenFor;
  object["remarks"] = source.remarks;
  Json passedOver = Json::object();
  for (std::size_t i = 0; i < source.passedOver.size(); ++i) {
    passedOver[std::string(NameOf(static_cast<PassedOver>(i)).key)] = source.passedOver[i];
  }
  object["passed_over"] = std::move(passedOver);
  object["problem"] = TextOrNull(source.problem);
  return object;
}

// A trip with all its parts, which are indices of run.survey.trips by their order.
Json JourneyObject(std::span<const std::size_t> parts, const ChartRun& run) {
  const Trip& first = run.survey.trips[parts.front()];
  TripAccount sum;
  Json list = Json::array();
  for (const std::size_t t : parts) {
    const Trip& part = run.survey.trips[t];
    list.push_back({{"name", part.name}, {"source", part.path}, {"soundings", part.soundings.size()}});
    sum.Add(run.trips[t]);
  }
  Json object = {{"name", first.name}, {"kind", first.kind}};
  AddAccount(sum, object);
  object["parts"] = std::move(list);
  return object;
}

// One for each journey, in the order of the first source of each.
Json JourneyList(const ChartRun& run) {
  const std::vector<Trip>& trips = run.survey.trips;
  std::vector<std::vector<std::size_t>> journeys;
  std::map<std::uint32_t, std::size_t> known;
  for (std::size_t t = 0; t < trips.size(); ++t) {
    const auto [place, isNew] = known.emplace(trips[t].journey, journeys.size());
    if (isNew) journeys.emplace_back();
    journeys[place->second].push_back(t);
  }
  Json list = Json::array();
  for (std::vector<std::size_t>& parts : journeys) {
    std::sort(parts.begin(), parts.end(),
              [&](std::size_t a, std::size_t b) { return trips[a].part < trips[b].part; });
    list.push_back(JourneyObject(parts, run));
  }
  return list;
}

}  // namespace

std::string ReportText(const ChartRun& run) {
  Json sources = Json::array(), unknown = Json::array(), outputs = Json::array();
  std::uint64_t read = 0, leftOut = 0;
  for (const SourceAccount& source : run.sources) {
    read += source.soundings;
    for (const LeftOutTrip& trip : source.leftOut) leftOut += trip.soundings;
    if (source.IsPassed()) {
      unknown.push_back(source.source.path);
    } else {
      sources.push_back(SourceObject(source, run));
    }
  }
  TripAccount sum;
  for (const TripAccount& trip : run.trips) sum.Add(trip);
  Json ignored = Json::array();
  for (const IgnoredFile& file : run.ignored) {
    ignored.push_back({{"path", file.path}, {"reason", file.words}});
  }
  for (const OutputAccount& output : run.outputs) {
    outputs.push_back({{"path", output.path},
                       {"bytes", output.problem.empty() ? Json(output.bytes) : Json()},
                       {"note", TextOrNull(output.note)},
                       {"problem", TextOrNull(output.problem)}});
  }
  Json total = {{"read", read}, {"left_out", leftOut}};
  AddAccount(sum, total);
  total["remarks"] = run.remarks;
  const Json report = {{"program", "sondrix-chart"},
                       {"version", SONDRIX_VERSION},
                       {"options", OptionsObject(run.options)},
                       {"total", std::move(total)},
                       {"sources", std::move(sources)},
                       {"unknown_files", std::move(unknown)},
                       {"ignored_files", std::move(ignored)},
                       {"trips", JourneyList(run)},
                       {"chart", ChartObject(run)},
                       {"outputs", std::move(outputs)}};
  return report.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace sondrix
