#include "app/batch/batch_window.h"

#include "app/batch/transcript.h"
#include "app/interrupt.h"
#include "core/code_page.h"
#include "jobs/clicks.h"
#include "platform/platform.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace sondrix {
namespace {

constexpr std::size_t ProgressWidth = 79;  // characters, so that a terminal doesn't wrap
constexpr auto ProgressPace = std::chrono::milliseconds(100);
constexpr unsigned PumpsPerLook = 64;  // at the clock

}  // namespace

BatchWindow::BatchWindow(const Style& style, Transcript& transcript)
    : style_(style), transcript_(transcript), disabled_{"RunSet", "RunEnd", "UseMet", "UseRad"} {}

void BatchWindow::BeginSource(std::string_view name) {
  inSource_ = true;
  name_ = name;
  std::replace_if(
      name_.begin(), name_.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; },
      '?');
  hasPrinted_ = false;
  noted_.clear();
  asked_.clear();
}

void BatchWindow::EndSource(bool printsLast) {
  EraseProgress();
  if (printsLast && (!hasPrinted_ || printed_ != att_)) PrintLine(att_);
  inSource_ = false;
}

void BatchWindow::SetAtt(std::string_view text, LineKind kind) {
  attKind_ = kind;
  if (att_ == text) return;
  att_ = text;
  if (style_.verbose && inSource_ && !att_.empty()) PrintLine(att_);
}

void BatchWindow::RepaintAtt() {
  if (style_.progress) ShowProgress();
}

void BatchWindow::SetEnabled(std::string_view control, bool enabled) {
  if (!enabled) {
    disabled_.emplace(control);
  } else if (const auto found = disabled_.find(control); found != disabled_.end()) {
    disabled_.erase(found);
  }
}

bool BatchWindow::IsEnabled(std::string_view control) const { return !disabled_.contains(control); }

void BatchWindow::Pump() {
  if (Interrupted() && run_) StopClick(*run_);
  if (style_.progress && ++pumps_ % PumpsPerLook == 0) ShowProgress();
}

bool BatchWindow::IsToEnd() const { return Interrupted(); }

// A question may come with every frame, with other numbers: it is shown once.
bool BatchWindow::Ask(std::string_view text, std::string_view title) {
  if (std::exchange(asked_, title) == title) return style_.answer;
  Note(std::string(title) + ": " + std::string(text) + (style_.answer ? " yes\n" : " no\n"));
  return style_.answer;
}

void BatchWindow::Inform(std::string_view text, std::string_view title) {
  Note(std::string(title) + ": " + std::string(text) + "\n");
}

void BatchWindow::PrintLine(std::string_view text) {
  transcript_.Print(style_.lines, name_ + ":" + std::string(text) + "\n");
  printed_ = text;
  hasPrinted_ = true;
}

void BatchWindow::Tell(std::string_view text) { Note(name_ + ": " + std::string(text) + "\n"); }

void BatchWindow::Note(const std::string& line) {
  if (line == noted_) return;
  noted_ = line;
  EraseProgress();
  transcript_.Print(stderr, line);
}

void BatchWindow::ShowProgress() {
  const Clock::time_point now = Clock::now();
  if (!inSource_ || now - shownAt_ < ProgressPace) return;
  shownAt_ = now;
  const std::string line = name_ + ":" + att_;
  const std::size_t dropped = FromCharacter(line, ProgressWidth).size();
  const std::string_view shown = std::string_view(line).substr(0, line.size() - dropped);
  const std::size_t width = CharacterCount(shown);
  const std::size_t blanks = shownWidth_ > width ? shownWidth_ - width : 0;
  PutText(stderr, "\r" + std::string(shown) + std::string(blanks, ' '));
  std::fflush(stderr);
  shownWidth_ = width;
}

void BatchWindow::EraseProgress() {
  if (shownWidth_ == 0) return;
  PutText(stderr, "\r" + std::string(shownWidth_, ' ') + "\r");
  std::fflush(stderr);
  shownWidth_ = 0;
}

}  // namespace sondrix
