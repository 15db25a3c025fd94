#include "app/chart/options.h"

#include "app/chart/option_values.h"
#include "app/command_line.h"
#include "app/exit_status.h"
#include "sounders/common/zone.h"
#include "sounders/table/table_names.h"

#include <CLI/CLI.hpp>
#include <array>
#include <iterator>
#include <tuple>
#include <utility>

namespace sondrix {
namespace {

constexpr const char* Description =
    "Reads recordings, logs and tables of soundings from many trips, cleans them, and makes a chart.\n"
    "Prints a line for each source, what became of the soundings, the grid and the files made.";

constexpr const char* Footer =
    "Exit status: 0 if all was read and made, 1 if a source gave no sounding or a file was\n"
    "not made, 2 for wrong usage.";

constexpr int MaxThreads = 256;

// Of what isn't made yet.
constexpr struct {
  const char *name, *type, *meaning;
} LaterOptions[] = {
    {"--level-zero", "METRES", "the level at which the chart's depths hold"},
    {"--levels-out", "FILE", "the levels used"},
    {"--project", "FILE", "sources, options and edits kept together"},
};

constexpr struct {
  std::string_view name;
  ModelMethod method;
} Methods[] = {
    {"auto", ModelMethod::Chosen},
    {"spline", ModelMethod::Spline},
};

ParsedChartOptions Refused(std::string text) { return {{}, ExitUsage, std::move(text)}; }

// What the options say as text, before it is looked at.
struct Texts {
  std::vector<std::string> outputs;
  std::string columns, sourceCrs, sourceUnits, channel, offset, draft, clean, level, crs;
  std::string method, tension, shore, cell, reach, contours, units;
};

// These return what is wrong, as a text for the user; empty where nothing is.

std::string SettleModel(const Texts& texts, ModelChoice& model) {
  for (const auto& [name, method] : Methods) {
    if (texts.method == name) model.method = method;
  }
  if (!texts.tension.empty()) {
    model.tension = NumberIn(texts.tension);
    if (!model.tension || *model.tension < 0 || *model.tension > 1)
      return "--tension takes a number from 0 to 1, not " + Quoted(texts.tension);
  }
  for (const auto& [text, length, option] :
       {std::tuple(&texts.cell, &model.cell, "--cell"), std::tuple(&texts.reach, &model.reach, "--reach")}) {
    if (text->empty()) continue;
    *length = LengthIn(*text);
    if (!*length) return std::string(option) + " takes metres above 0, not " + Quoted(*text);
  }
  model.shore = texts.shore;
  model.isInFeet = texts.units == "ft";
  if (texts.contours.empty()) return {};
  std::vector<double> depths = DepthsIn(texts.contours);
  if (depths.empty()) {
    return "--contours takes a step above 0, as 0.5, or depths above 0 that rise, as 1,2,3,5,10; not " +
           Quoted(texts.contours);
  }
  for (double& depth : depths) depth *= model.MetresOfUnit();
  if (depths.size() == 1) {
    model.contours.step = depths[0];
  } else {
    model.contours.list = std::move(depths);
  }
  return {};
}

std::string Settle(const Texts& texts, ChartOptions& options) {
  for (const std::string& path : texts.outputs) {
    if (IsKeptEnding(path)) return OutputRefusal(path);
    options.outputs.push_back({path, ExportKindOf(path).value_or(ExportKind::Contours)});
  }
  if (!texts.columns.empty()) {
    for (const std::string_view name : SplitAtCommas(texts.columns)) {
      if (ColumnNameOf(name).meaning == Meaning::Unknown)
        return "--columns: " + Quoted(name) + " is no name of a column";
      options.columns.emplace_back(name);
    }
  }
  for (const auto& [text, code, option] : {std::tuple(&texts.sourceCrs, &options.sourceCrs, "--source-crs"),
                                           std::tuple(&texts.crs, &options.crs, "--crs")}) {
    if (text->empty() || (text == &texts.crs && *text == "auto")) continue;
    *code = EpsgCode(*text);
    if (code->empty()) return std::string(option) + " takes EPSG:n, not " + Quoted(*text);
  }
  if (!options.zone.empty() && !ZoneOf(options.zone)) {
    return "--zone takes a name as Europe/Berlin or an offset as +02:00, not " + Quoted(options.zone);
  }
  if (!texts.sourceUnits.empty()) options.isFeet = texts.sourceUnits == "ft";
  if (!texts.channel.empty() && texts.channel != "auto") {
    options.channel = static_cast<std::uint8_t>(texts.channel.front() - '0');
  }
  if (!texts.offset.empty()) {
    const std::vector<std::string_view> parts = SplitAtCommas(texts.offset);
    const auto right = CentimetresIn(parts[0]);
    const auto ahead = parts.size() == 2 ? CentimetresIn(parts[1]) : std::nullopt;
    if (!right || !ahead) {
      return "--offset takes two numbers, to the right and ahead in centimetres, as 30,-120; not " +
             Quoted(texts.offset);
    }
    options.offsetRight = *right;
    options.offsetAhead = *ahead;
  }
  if (!texts.draft.empty()) {
    const auto draft = CentimetresIn(texts.draft);
    if (!draft) return "--draft takes a number of centimetres, not " + Quoted(texts.draft);
    options.draft = *draft;
  }
  options.cleans = texts.clean != "off";
  if (!texts.level.empty() && texts.level != "none") {
    return "--level " + texts.level + ": this version knows no water levels; leave it out or say none";
  }
  if (std::string wrong = SettleModel(texts, options.model); !wrong.empty()) return wrong;
  if (options.sources.empty()) return "no source is given; --help tells how";
  for (const std::string& source : options.sources) {
    if (source.empty()) return "a source is empty";
  }
  return {};
}

}  // namespace

std::string OutputRefusal(const std::string& path) {
  return Quoted(path) + ": this version makes " + std::string(ExportEndings());
}

std::string_view NameOf(ModelMethod method) {
  for (const auto& row : Methods) {
    if (row.method == method) return row.name;
  }
  return {};
}

ParsedChartOptions ParseChartOptions(std::span<const std::string> arguments) {
  CLI::App app(Description, "sondrix-chart");
  app.allow_windows_style_options(false);  // a path may begin with a slash
  app.footer(Footer);

  ChartOptions options;
  Texts texts;
  const auto add = [&](const char* names, auto& value, const char* type, const char* meaning) {
    return app.add_option(names, value, meaning)
        ->type_name(type)
        ->check(CLI::Validator(
            [](const std::string& text) { return text.empty() ? "nothing is given" : std::string(); }, ""));
  };
  const auto choice = [&](const char* names, std::string& value, const char* type,
                          std::vector<std::string> values, const char* meaning) {
    return add(names, value, type, meaning)->check(CLI::IsMember(std::move(values)).description(""));
  };
  add("-o,--output", texts.outputs, "FILE",
      "what to make, by its ending; repeatable:\n"
      ".csv   every sounding with its fate\n"
      ".gpx   tracks with depths\n"
      ".xyz   soundings used: easting northing depth\n"
      ".gpkg  layers soundings, tracks, contours and areas\n"
      ".tif   the grid: depth and its uncertainty, metres\n"
      ".geojson, .shp and what else GDAL makes of lines:\n"
      "       contours")
      ->allow_extra_args(false);
  add("--columns", texts.columns, "NAMES", "of a table, as lat,lon,depth");
  add("--source-crs", texts.sourceCrs, "EPSG:n", "what a table's coordinates are");
  choice("--source-units", texts.sourceUnits, "m|ft", {"m", "ft"}, "of a table's depths");
  app.add_flag("--z-up", options.isZUp,
               "heights, positive upwards: so a table's depths are\nread, and so a .tif is made");
  add("--zone", options.zone, "ZONE", "of a table's times, as Europe/Berlin or +02:00 (UTC)");
  choice("--channel", texts.channel, "auto|0|2|5", {"auto", "0", "2", "5"},
         "of recordings; auto takes the one whose frames carry\ndepths");
  add("--offset", texts.offset, "X,Y", "transducer to the right and ahead of the antenna,\ncentimetres");
  add("--draft", texts.draft, "CM", "added to every depth");
  choice("--clean", texts.clean, "on|off", {"on", "off"}, "look for lost bottom and spikes (on)");
  add("--level", texts.level, "none", "water level (none)");
  choice("--method", texts.method, "auto|spline", {"auto", "spline"},
         "how the grid is made: the weighted mean of splines that\npredicts lines left out best (auto), or "
         "the best one");
  add("--tension", texts.tension, "0..1",
      "of the one spline that is taken then: 0 bends least, 1 has\nno hills between soundings");
  add("--shore", texts.shore, "FILE",
      "the shore, lines or areas in any vector format: depth 0,\nand land outside");
  add("--cell", texts.cell, "METRES", "cell of the grid (from the density of the soundings)");
  add("--reach", texts.reach, "METRES",
      "how far from a sounding the chart goes (one and a half\nline spacings, at least five cells)");
  add("--contours", texts.contours, "DEPTHS",
      "of contours: a step as 0.5 or a list as 1,2,3,5,10\n(about ten)");
  choice("--units", texts.units, "m|ft", {"m", "ft"}, "of the contours, in files too (m)");
  add("--crs", texts.crs, "EPSG:n", "projection of the outputs, or auto (the UTM zone of the\nsoundings)");
  add("--report", options.report, "FILE", "the report as JSON");
  add("-j,--threads", options.threads, "N", "how much to do at a time (all cores)")
      ->check(CLI::Range(1, MaxThreads).description(""));
  app.add_flag("-v,--verbose", options.verbose,
               "name what a folder leaves out, and tell the fates of each source");
  app.set_version_flag("--version", "sondrix-chart " SONDRIX_VERSION, "print the version");
  app.add_option(
         "SOURCE", options.sources,
         "recordings, logs, tables of soundings; a folder stands\nfor all files in it that can be read")
      ->type_name("");
  std::array<std::string, std::size(LaterOptions)> later;
  for (std::size_t i = 0; i < later.size(); ++i) {
    add(LaterOptions[i].name, later[i], LaterOptions[i].type, LaterOptions[i].meaning)->group("");
  }

  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // the last one first
  } catch (const CLI::CallForHelp&) {
    return {{}, ExitWell, app.help()};
  } catch (const CLI::CallForVersion& version) {
    return {{}, ExitWell, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& error) {
    return Refused(error.what());
  }
  for (const auto& one : LaterOptions) {
    if (app.count(one.name) > 0) {
      return Refused(std::string(one.name) + " (" + one.meaning + "): this version doesn't make that");
    }
  }
  if (std::string wrong = Settle(texts, options); !wrong.empty()) return Refused(std::move(wrong));
  return {std::move(options), std::nullopt, {}};
}

}  // namespace sondrix
