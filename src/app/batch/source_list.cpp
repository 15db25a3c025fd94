#include "app/batch/source_list.h"

#include "app/places.h"
#include "core/files.h"
#include "core/settings.h"
#include "core/text.h"
#include "jobs/job_table.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

struct Candidate {
  std::string path;
  bool isGiven = false;  // by its own name
  bool isTaken = true;
};

// The row of a file's extension; isFolded compares without case. Null for a file that no row names.
const JobRow* NamedJob(std::string_view path, bool isFolded) {
  const std::string_view name = FileNameOf(path);
  const std::size_t point = name.rfind('.');
  if (point == std::string_view::npos) return nullptr;
  std::string extension(name.substr(point + 1));
  if (isFolded) std::transform(extension.begin(), extension.end(), extension.begin(), Lower);
  const std::span<const JobRow> jobs = Jobs();
  const auto row =
      std::find_if(jobs.begin(), jobs.end(), [&](const JobRow& one) { return one.extension == extension; });
  return row == jobs.end() ? nullptr : &*row;
}

// What was given comes first, then the table's order: a file keeps its place as a source before those that it
// may write.
std::ptrdiff_t RankOf(const Candidate& candidate) {
  return candidate.isGiven ? -1 : &JobOf(candidate.path) - Jobs().data();
}

void LeaveOutputsOut(std::vector<Candidate>& candidates, const Settings& settings, SourceList& list) {
  std::vector<Candidate*> order;
  for (Candidate& candidate : candidates) order.push_back(&candidate);
  std::stable_sort(order.begin(), order.end(), [](const Candidate* one, const Candidate* other) {
    return RankOf(*one) < RankOf(*other);
  });
  std::map<std::string, std::string> writers;
  for (Candidate* candidate : order) {
    const auto writer = writers.find(PlaceOf(candidate->path));
    if (writer != writers.end() && !candidate->isGiven) {
      candidate->isTaken = false;
      list.notes.push_back(candidate->path + ": left out, it has the name of an output of " + writer->second);
      continue;
    }
    // Also what an earlier call may have left beside the source.
    Settings beside = settings;
    beside.TargetPath =
        candidate->path.substr(0, candidate->path.size() - FileNameOf(candidate->path).size());
    for (const Settings* each : {&settings, static_cast<const Settings*>(&beside)}) {
      for (const std::string& output : OutputsOf(*each, candidate->path)) {
        writers.emplace(PlaceOf(output), candidate->path);
      }
    }
  }
}

}  // namespace

SourceList ListSources(std::span<const std::string> given, const Settings& settings, bool isDeep) {
  SourceList list;
  std::vector<Candidate> candidates;
  for (const std::string& source : given) {
    std::error_code unknown;
    if (!fs::is_directory(PathOf(source), unknown)) {
      candidates.push_back({source, true});
      continue;
    }
    const std::size_t before = candidates.size();
    for (std::string& file : FilesIn(source, isDeep)) {
      if (NamedJob(file, false)) {
        candidates.push_back({std::move(file)});
      } else if (const JobRow* job = NamedJob(file, true)) {
        list.notes.push_back(file + ": left out, its extension must be spelt ." +
                             std::string(job->extension));
      }
    }
    if (candidates.size() == before) list.emptyFolders.push_back(source);
  }
  LeaveOutputsOut(candidates, settings, list);
  for (Candidate& candidate : candidates) {
    if (candidate.isTaken) list.sources.push_back(std::move(candidate.path));
  }
  return list;
}

}  // namespace sondrix
