#include "app/batch/convert.h"

#include "app/batch/batch_window.h"
#include "app/batch/end_picture.h"
#include "app/batch/json_line.h"
#include "app/batch/options.h"
#include "app/batch/output_clash.h"
#include "app/batch/transcript.h"
#include "app/command_line.h"
#include "app/edit_field.h"
#include "app/empty_result.h"
#include "app/interrupt.h"
#include "app/session.h"
#include "core/files.h"
#include "core/run_result.h"
#include "jobs/clicks.h"
#include "platform/platform.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>

namespace sondrix {
namespace {

std::string ClashLine(const Clash& clash) {
  return clash.overwrites
             ? " ! its output " + Quoted(clash.path) + " would overwrite the source " + Quoted(clash.other)
             : " ! " + Quoted(clash.other) + " would write the same output " + Quoted(clash.path);
}

// Everything of one source. The session lives no longer, so that no source's run shows in another's.
class SourceRun {
 public:
  SourceRun(const Session& settled, const BatchOptions& options, const BatchWindow::Style& style, bool isHeld)
      : options_(options), transcript_(isHeld), window_(style, transcript_), session_(window_) {
    TakeOver(session_, settled);
    window_.SetRun(&session_.run);
  }

  // True if it ended well.
  bool Convert(const std::string& source, const std::optional<Clash>& clash) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point begin = Clock::now();
    const std::string_view name = FileNameOf(source);
    window_.BeginSource(name.empty() ? std::string_view(source) : name);
    RunResult result;
    if (clash) {
      result.end = RunEnd::Refused;
      window_.SetAtt(ClashLine(*clash), LineKind::Fault);
    } else {
      EditField(session_, "Source", source);
      result = GoClick(session_.run);
    }
    const bool isWell = result.IsWell() && !Interrupted();
    window_.EndSource(!options_.json && !(options_.quiet && isWell));
    if (!clash) TellWhyEmpty(source, result);
    if (!options_.noPicture) SaveEndPicture(session_, source, result);
    TellLost(source, result);
    const bool isAllWell = isWell && result.IsWell();  // the picture too
    if (options_.json && !(options_.quiet && isAllWell)) {
      const std::chrono::duration<double> seconds = Clock::now() - begin;
      transcript_.Print(stdout, JsonLine(source, result, window_.Att(), seconds.count()) + "\n");
    }
    return isAllWell;
  }

  void Release() { transcript_.Release(); }

 private:
  void TellWhyEmpty(const std::string& source, const RunResult& result) {
    const std::string why = WhyEmptyLine(result, session_.settings, source, session_.langId);
    if (!why.empty()) window_.Tell(why);
  }

  // The line tells of the last, unless a later report took its place.
  void TellLost(const std::string& source, const RunResult& result) {
    if (result.lost.empty() || window_.AttKind() == LineKind::Fault) return;
    std::string paths;
    for (const Fault& fault : result.lost) paths += ": " + fault.Path();
    transcript_.Print(stderr, Complaint(BatchProgram, source + ": " + LostLine(result.lost.back()) + paths));
  }

  const BatchOptions& options_;
  Transcript transcript_;
  BatchWindow window_;
  Session session_;
};

}  // namespace

bool ConvertAll(const Session& settled, const BatchOptions& options,
                const std::vector<std::string>& sources) {
  const std::vector<std::optional<Clash>> clashes = OutputClashes(settled.settings, sources);
  // The map program is told of one run at a time.
  const int most = settled.settings.ViewOzi ? 1 : options.jobs;
  const std::size_t workers = std::min(static_cast<std::size_t>(most), sources.size());
  const bool isHeld = workers > 1;
  const BatchWindow::Style style = {.verbose = options.verbose,
                                    .answer = options.answer,
                                    .progress = !options.verbose && !isHeld && IsTerminal(stderr),
                                    .lines = options.json ? stderr : stdout};

  std::mutex mutex;  // of what follows
  std::size_t next = 0, printed = 0;
  bool allWell = true;
  std::deque<std::optional<SourceRun>> runs(sources.size());
  std::vector<bool> isDone(sources.size());
  const auto work = [&] {
    for (;;) {
      std::size_t mine = 0;
      {
        const std::lock_guard lock(mutex);
        if (next == sources.size() || Interrupted()) return;
        mine = next++;
        runs[mine].emplace(settled, options, style, isHeld);
      }
      const bool isWell = runs[mine]->Convert(sources[mine], clashes[mine]);
      const std::lock_guard lock(mutex);
      allWell = allWell && isWell;
      isDone[mine] = true;
      for (; printed < sources.size() && isDone[printed]; ++printed) {
        runs[printed]->Release();
        runs[printed].reset();
      }
      std::fflush(stdout);
    }
  };
  std::vector<std::jthread> threads;
  for (std::size_t i = 1; i < workers; ++i) threads.emplace_back(work);
  work();
  threads.clear();
  return allWell && printed == sources.size();
}

}  // namespace sondrix
