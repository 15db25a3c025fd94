#include "app/chart/options.h"

#include "app/command_line.h"
#include "app/exit_status.h"
#include "core/text.h"
#include "sounders/common/zone.h"
#include "sounders/table/table_names.h"

#include <CLI/CLI.hpp>
#include <array>
#include <charconv>
#include <cmath>

namespace sondrix {
namespace {

constexpr const char* Description =
    "Reads recordings, logs and tables of soundings from many trips, cleans them and hands them on.\n"
    "Prints a line for each source, what became of the soundings, and the files made.";

constexpr const char* Footer =
    "Exit status: 0 if all was read and made, 1 if a source gave no sounding or a file was\n"
    "not made, 2 for wrong usage.";

constexpr int MaxThreads = 256;

// Of the depth model, which isn't made yet.
constexpr struct {
  const char *name, *type, *meaning;
} LaterOptions[] = {
    {"--level-zero", "METRES", "the level at which the chart's depths hold"},
    {"--levels-out", "FILE", "the levels used"},
    {"--project", "FILE", "sources, options and edits kept together"},
    {"--method", "NAME", "how the grid is made"},
    {"--tension", "NUMBER", "of the grid"},
    {"--shore", "FILE", "the shore: depth 0, and land outside"},
    {"--cell", "METRES", "cell of the grid"},
    {"--reach", "METRES", "how far from a sounding the chart goes"},
    {"--contours", "STEP|LIST", "depths of contours"},
    {"--units", "m|ft", "of contours, labels and pictures"},
};

ParsedChartOptions Refused(std::string text) { return {{}, ExitUsage, std::move(text)}; }

std::vector<std::string_view> SplitAtCommas(std::string_view text) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t comma = text.find(',');
    parts.push_back(Trimmed(text.substr(0, comma)));
    if (comma == std::string_view::npos) return parts;
    text.remove_prefix(comma + 1);
  }
}

bool ParseCentimetres(std::string_view text, double& metres) {
  if (text.starts_with('+')) text.remove_prefix(1);
  double centimetres = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), centimetres);
  // No boat is longer than that.
  constexpr double most = 1e5;
  if (error != std::errc() || end != text.data() + text.size() || !(std::abs(centimetres) <= most))
    return false;
  metres = centimetres / 100;
  return true;
}

// In capitals; empty where it isn't "EPSG:" and a number.
std::string EpsgCode(std::string_view text) {
  constexpr std::string_view authority = "epsg:";
  constexpr std::size_t mostDigits = 9;
  const std::string_view number = text.substr(std::min(text.size(), authority.size()));
  const bool isCode = std::equal(authority.begin(), authority.end(), text.begin(),
                                 text.end() - static_cast<std::ptrdiff_t>(number.size()),
                                 [](char a, char b) { return a == Lower(b); }) &&
                      !number.empty() && number.size() <= mostDigits &&
                      number.find_first_not_of("0123456789") == std::string_view::npos;
  return isCode ? "EPSG:" + std::string(number) : std::string();
}

// What the options say as text, before it is looked at.
struct Texts {
  std::vector<std::string> outputs;
  std::string columns, sourceCrs, sourceUnits, channel, offset, draft, clean, level, crs;
};

// Returns what is wrong, as a text for the user; empty where nothing is.
std::string Settle(const Texts& texts, ChartOptions& options) {
  for (const std::string& path : texts.outputs) {
    const auto kind = ExportKindOf(path);
    if (!kind || NeedsChart(*kind))
      return Quoted(path) + ": this version makes " + std::string(ExportEndings());
    options.outputs.push_back({path, *kind});
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
    if (parts.size() != 2 || !ParseCentimetres(parts[0], options.offsetRight) ||
        !ParseCentimetres(parts[1], options.offsetAhead)) {
      return "--offset takes two numbers, to the right and ahead in centimetres, as 30,-120; not " +
             Quoted(texts.offset);
    }
  }
  if (!texts.draft.empty() && !ParseCentimetres(texts.draft, options.draft)) {
    return "--draft takes a number of centimetres, not " + Quoted(texts.draft);
  }
  options.cleans = texts.clean != "off";
  if (!texts.level.empty() && texts.level != "none") {
    return "--level " + texts.level + ": this version knows no water levels; leave it out or say none";
  }
  if (options.sources.empty()) return "no source is given; --help tells how";
  for (const std::string& source : options.sources) {
    if (source.empty()) return "a source is empty";
  }
  return {};
}

}  // namespace

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
      ".gpkg  layers soundings and tracks")
      ->allow_extra_args(false);
  add("--columns", texts.columns, "NAMES", "of a table, as lat,lon,depth");
  add("--source-crs", texts.sourceCrs, "EPSG:n", "what a table's coordinates are");
  choice("--source-units", texts.sourceUnits, "m|ft", {"m", "ft"}, "of a table's depths");
  app.add_flag("--z-up", options.isZUp, "a table's depths are heights: positive upwards");
  add("--zone", options.zone, "ZONE", "of a table's times, as Europe/Berlin or +02:00 (UTC)");
  choice("--channel", texts.channel, "auto|0|2|5", {"auto", "0", "2", "5"},
         "of recordings; auto takes the one whose frames carry\ndepths");
  add("--offset", texts.offset, "X,Y", "transducer to the right and ahead of the antenna,\ncentimetres");
  add("--draft", texts.draft, "CM", "added to every depth");
  choice("--clean", texts.clean, "on|off", {"on", "off"}, "look for lost bottom and spikes (on)");
  add("--level", texts.level, "none", "water level (none)");
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
