#include "app/batch/options.h"

#include "app/exit_status.h"

#include <CLI/CLI.hpp>

namespace sondrix {
namespace {

constexpr const char* Description =
    "Converts fish-finder recordings and depth logs (SL2, SL3, CSV, TXT, LOG, MP).\n"
    "Prints a line for each source: its file name, a colon, and how its run ended.";

constexpr int MaxJobs = 256;

constexpr const char* Footer =
    "Exit status: 0 if every source ended well, 1 if a run was refused, failed, lost an\n"
    "output, ended before its source did or was interrupted, 2 for wrong usage.";

ParsedOptions Refused(std::string text) { return {{}, ExitUsage, std::move(text)}; }

}  // namespace

ParsedOptions ParseOptions(std::span<const std::string> arguments) {
  CLI::App app(Description, "sondrix-batch");
  app.allow_windows_style_options(false);  // a path may begin with a slash
  app.footer(Footer);

  BatchOptions options;
  std::string target, answer;
  std::vector<std::string> edits;
  CLI::Option* targetOption =
      app.add_option("-o,--target", target, "folder for all outputs")->type_name("DIR");
  app.add_option("-s,--set", edits,
                 "set a field of the window, as a user would, in the order given:\n"
                 "text, a flag 0|1, EhoSens=-100..50, UseTyp=0|2|5|9,\n"
                 "boxLang=RUS|ENG|DEU; repeatable")
      ->type_name("FIELD=VALUE")
      ->allow_extra_args(false);
  app.add_option("--ini", options.iniFile, "start from these settings instead of the built-in defaults")
      ->type_name("FILE");
  app.add_option("--answer", answer, "what to answer to a question: yes (the default) or no")
      ->type_name("yes|no")
      ->check(CLI::IsMember({"yes", "no"}).description(""));
  app.add_flag("-v,--verbose", options.verbose,
               "print every line that the log line shows, not just the last");
  app.add_flag("-q,--quiet", options.quiet, "print no line of a source that ended well");
  app.add_flag("--json", options.json, "print an object of JSON for each source in the place of its line");
  app.add_option("-j,--jobs", options.jobs, "sources to convert at a time; the lines keep their order")
      ->type_name("N")
      ->check(CLI::Range(1, MaxJobs).description(""));
  app.add_flag("--no-picture", options.noPicture, "write no picture of the end of a run");
  app.add_flag("-r,--recursive", options.recursive, "of a folder convert the files in its subfolders too");
  app.add_option("--write-ini", options.writeIni,
                 "write the settings as they are given here, but for the\nchannel, to a file")
      ->type_name("FILE");
  app.add_flag("--list-fields", options.listFields, "print the fields, their defaults and meaning");
  app.set_version_flag("--version", "sondrix-batch " SONDRIX_VERSION, "print the version");
  app.add_option("SOURCE", options.sources, "files to convert, or folders of such files")->type_name("");

  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // the last one first
  } catch (const CLI::CallForHelp&) {
    return {{}, ExitWell, app.help()};
  } catch (const CLI::CallForVersion& version) {
    return {{}, ExitWell, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& error) {
    return Refused(error.what());
  }

  if (targetOption->count() > 0) options.targetPath = target;
  options.answer = answer != "no";
  for (const std::string& edit : edits) {
    const std::size_t equals = edit.find('=');
    if (equals == std::string::npos) return Refused("--set takes FIELD=VALUE, not \"" + edit + "\"");
    options.edits.push_back({edit.substr(0, equals), edit.substr(equals + 1)});
  }
  for (const std::string& source : options.sources) {
    if (source.empty()) return Refused("a source is empty");
  }
  return {std::move(options), std::nullopt, {}};
}

}  // namespace sondrix
