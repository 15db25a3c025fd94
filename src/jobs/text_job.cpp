#include "jobs/text_job.h"

#include "core/code_page.h"
#include "core/messages.h"
#include "core/number_text.h"
#include "core/pause.h"
#include "core/rounding.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "core/window.h"
#include "formats/point_list.h"

namespace sondrix {
namespace {

constexpr int PassOverWaitMs = 10;
constexpr std::chrono::milliseconds WorkBetweenWaits{250};
constexpr int PauseWaits = 10;  // of DefectPause each, between two looks at the flags

}  // namespace

TextSource SourceOf(const Run& run, LineStart start) {
  return {run.settings.Source, start, TextSource::DefaultBlock,
          [&window = run.window] { return window.IsToEnd(); }};
}

void ShowStop(Run& run) {
  run.state.StopFlag = true;
  run.window.SetAtt(run.messages.MsgAborted, LineKind::Notice);
}

bool MayReadOn(Run& run) { return MayGoOn(run, PauseWaits * run.state.DefectPause, &Messages::MsgAborted); }

void ShowLineProgress(Run& run, std::string& text, const LineProgress& progress) {
  const auto last = static_cast<double>(progress.lineCount - 1);
  text.assign(" ");
  AppendWhole(text, static_cast<std::int64_t>(Finite(static_cast<double>(progress.line) / last * 100)));
  text.append("% ").append(run.messages.WordLine).append(" ");
  AppendWhole(text, progress.line);
  text += '/';
  AppendWhole(text, progress.lineCount - 1);
  text.append(" ").append(run.messages.WordDot).append(" ");
  AppendWhole(text, progress.points);
  run.window.SetAtt(text);
  run.window.Pump();
}

void ReportBadLine(const Run& run, TextBody& bad, std::string_view reason, std::string_view value,
                   std::int64_t line) {
  std::string record;
  AppendBadLine(record, {ToCodePage(reason), value, ToCodePage(run.messages.WordInLine), line});
  bad.Add(record);
}

EyeTime NextEyeTime() { return std::chrono::steady_clock::now() + WorkBetweenWaits; }

void PassOverLine(Run& run, TextBody& bad, EyeTime& next, std::string_view reason, std::int64_t line) {
  ReportBadLine(run, bad, reason, {}, line);
  std::string text = " ";
  text.append(run.messages.WordLine).append(" ");
  AppendWhole(text, line);
  text.append(" - ").append(reason).append("...");
  run.window.SetAtt(text);
  run.window.RepaintAtt();
  if (std::chrono::steady_clock::now() < next) return;
  run.window.Wait(PassOverWaitMs);
  next = NextEyeTime();
}

void ShowTextFault(Run& run, RunResult& result, std::string_view place, std::string_view Messages::*message) {
  result.end = RunEnd::Failed;
  result.place = place;
  result.fault = CaughtFault();
  result.message = message;
  run.window.Beep();
  run.window.SetAtt(LineOf(result, run.messages), LineKind::Fault);
}

void StopBeforeLines(Run& run, RunResult& result) {
  result.end = RunEnd::Stopped;
  result.message = &Messages::MsgAborted;
  ShowStop(run);
}

void RefuseSource(Run& run, RunResult& result) {
  result.end = RunEnd::Refused;
  result.message = &Messages::MsgNoDelimiter;
  run.window.Beep();
  run.window.SetAtt(LineOf(result, run.messages), LineKind::Fault);
}

void ClearTargetName(Run& run) {
  run.settings.TargetName.clear();
  run.window.ShowField("TargetName");
}

float FloatOf(std::string_view text) {
  const auto value = static_cast<float>(LocParse(text));
  Finite(value);
  return value;
}

DateSeconds LocalClock::Now() {
  const std::int64_t now = UnixNow();
  if (now != unixSeconds_) {
    date_ = LocalDate(now);
    unixSeconds_ = now;
  }
  return date_;
}

}  // namespace sondrix
