#include "jobs/job_table.h"

#include "core/files.h"
#include "core/settings.h"
#include "jobs/job_csv.h"
#include "jobs/job_log.h"
#include "jobs/job_mp.h"
#include "sonar/job_sl.h"

#include <algorithm>

namespace sondrix {
namespace {

using S = Settings;

constexpr std::size_t RootLength = 3;  // of a drive's root, which needs no separator added

constexpr OutputSuffix SonarOutputs[] = {
    {".csv"}, {"_bad.txt"}, {"_usr.wpt"}, {"_ch#.sl2", &S::MakeCut}, {EndPictureSuffix, &S::MakeGraf}};
constexpr OutputSuffix TableOutputs[] = {{".txt"}, {".plt"}, {".mp"}, {"_bad.txt"}};
constexpr OutputSuffix LogOutputs[] = {{".drd.txt"}, {".srf.txt"}, {".plt"}, {".mp"}, {".bad.txt"}};
constexpr OutputSuffix MapOutputs[] = {{".txt"}};

RunResult RunSonar(Run& run) { return JobSl(run); }

constexpr JobRow Table[] = {
    {.extension = "sl2", .run = RunSonar, .outputs = SonarOutputs, .hasPictures = true},
    {.extension = "sl3", .run = RunSonar, .outputs = SonarOutputs, .hasPictures = true},
    {.extension = "log", .run = JobLog, .outputs = LogOutputs},
    {.extension = "csv", .run = JobCsv, .outputs = TableOutputs},
    {.extension = "mp", .run = JobMp, .outputs = MapOutputs, .isBesideSource = true},
    {.extension = "txt", .run = JobCsv, .outputs = TableOutputs}};

}  // namespace

std::span<const JobRow> Jobs() { return Table; }

const JobRow& JobOf(std::string_view source) {
  const std::string_view extension = source.substr(source.rfind('.') + 1);
  const auto* const row = std::find_if(std::begin(Table), std::end(Table),
                                       [extension](const JobRow& one) { return one.extension == extension; });
  return row == std::end(Table) ? JobOf("csv") : *row;
}

std::string SuffixOf(std::string_view suffix, int channel) {
  std::string text(suffix);
  const std::size_t number = text.find('#');
  return number == std::string::npos ? text : text.replace(number, 1, std::to_string(channel));
}

std::vector<std::string> OutputsOf(const Settings& settings, std::string_view source) {
  const std::string_view file = FileNameOf(source);
  const std::size_t point = file.rfind('.');
  if (file.empty() || (point == std::string_view::npos && settings.TargetName.empty())) return {};

  const JobRow& job = JobOf(source);
  const std::string folder = WithSeparator(settings.TargetPath, RootLength);
  const std::string name(settings.TargetName.empty() ? file.substr(0, point) : settings.TargetName);
  const std::string stem = job.isBesideSource
                               ? std::string(source.substr(0, source.size() - job.extension.size() - 1))
                               : folder + name;
  std::vector<std::string> paths;
  for (const OutputSuffix& suffix : job.outputs) {
    if (!suffix.onlyWith || settings.*suffix.onlyWith) {
      paths.push_back(stem + SuffixOf(suffix.text, settings.UseTyp));
    }
  }
  if (job.hasPictures && settings.SaveGraf) paths.push_back(folder + "echo");
  return paths;
}

}  // namespace sondrix
