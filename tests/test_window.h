#pragma once

#include "core/window.h"

#include <functional>
#include <map>
#include <vector>

namespace sondrix {

// A window without an eye. It keeps what it was shown, and acts for the user at the n-th pump.
class TestWindow : public Window {
 public:
  void SetAtt(std::string_view text, LineKind itsKind = LineKind::Progress) override {
    att = text;
    kind = itsKind;
    if (lines.empty() || lines.back() != text) lines.emplace_back(text);
  }
  std::string_view Att() const override { return att; }
  LineKind AttKind() const override { return kind; }
  void RepaintAtt() override {}
  void SetSpd(std::string_view text) override { spd = text; }
  std::string_view Spd() const override { return spd; }
  void ShowField(std::string_view field) override { shown.emplace_back(field); }
  void SetEnabled(std::string_view control, bool on) override { enabled[std::string(control)] = on; }
  bool IsEnabled(std::string_view control) const override {
    const auto found = enabled.find(std::string(control));
    return found == enabled.end() || found->second;
  }
  void SetCaption(std::string_view control, std::string_view text) override {
    captions[std::string(control)] = text;
  }
  void SetBusy(bool on) override { busy = on; }
  void Pump() override {
    ++pumps;
    if (onPump) onPump(pumps);
  }
  void Wait(int milliseconds) override { waited += milliseconds; }
  bool IsToEnd() const override { return isToEnd; }
  void Beep() override { ++beeps; }
  bool Ask(std::string_view text, std::string_view) override {
    questions.emplace_back(text);
    return onAsk ? onAsk(questions.size()) : true;
  }
  void Inform(std::string_view text, std::string_view) override { informed.emplace_back(text); }

  // How many of the lines that the log line held begin so.
  int CountLines(std::string_view start) const {
    int count = 0;
    for (const std::string& line : lines) count += line.starts_with(start);
    return count;
  }

  std::string att, spd;
  LineKind kind = LineKind::Progress;
  std::vector<std::string> lines, shown, questions, informed;
  std::map<std::string, bool> enabled;
  std::map<std::string, std::string> captions;
  bool busy = false, isToEnd = false;
  int pumps = 0, beeps = 0, waited = 0;
  std::function<void(int)> onPump;         // with the pump's number, from 1
  std::function<bool(std::size_t)> onAsk;  // with the question's number, from 1
};

}  // namespace sondrix
