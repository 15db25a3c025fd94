#pragma once

#include "core/run.h"
#include "core/window.h"

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <set>
#include <string>
#include <string_view>

namespace sondrix {

class Transcript;

// A window without a toolkit: it keeps the texts, answers questions by a fixed answer, and turns Ctrl-C into
// a stop. The lines of a source go to standard output, everything else to standard error.
class BatchWindow : public Window {
 public:
  // Which lines of a source are printed, beside those of EndSource.
  struct Style {
    bool verbose = false;   // all that the log line shows
    bool answer = true;     // to every question
    bool progress = false;  // on standard error, while that is a terminal
    std::FILE* lines = stdout;
  };
  BatchWindow(const Style& style, Transcript& transcript);

  // The run whose flags Ctrl-C sets; null for none.
  void SetRun(Run* run) { run_ = run; }

  // Between these two, lines belong to a source of that name. The end prints the last one if it is asked to,
  // unless it was the last that was printed already.
  void BeginSource(std::string_view name);
  void EndSource(bool printsLast);
  // A line of the source on standard error.
  void Tell(std::string_view text);

  void SetAtt(std::string_view text, LineKind kind = LineKind::Progress) override;
  std::string_view Att() const override { return att_; }
  LineKind AttKind() const override { return attKind_; }
  void RepaintAtt() override;
  void SetSpd(std::string_view text) override { spd_ = text; }
  std::string_view Spd() const override { return spd_; }
  void ShowField(std::string_view) override {}
  void SetEnabled(std::string_view control, bool enabled) override;
  bool IsEnabled(std::string_view control) const override;
  void SetCaption(std::string_view, std::string_view) override {}
  void SetBusy(bool) override {}
  void Pump() override;
  void Wait(int) override {}
  bool IsToEnd() const override;
  void Beep() override {}
  bool Ask(std::string_view text, std::string_view title) override;
  void Inform(std::string_view text, std::string_view title) override;

 private:
  using Clock = std::chrono::steady_clock;

  void PrintLine(std::string_view text);
  void Note(const std::string& line);
  void ShowProgress();
  void EraseProgress();

  Style style_;
  Transcript& transcript_;
  Run* run_ = nullptr;
  bool inSource_ = false;
  std::string name_, att_, spd_;
  LineKind attKind_ = LineKind::Progress;
  std::string printed_;  // the last line of the source on standard output
  bool hasPrinted_ = false;
  std::string noted_;  // the last of standard error
  std::string asked_;  // the title of the last question
  std::set<std::string, std::less<>> disabled_;
  unsigned pumps_ = 0;
  Clock::time_point shownAt_;
  std::size_t shownWidth_ = 0;  // characters of progress on the terminal
};

}  // namespace sondrix
