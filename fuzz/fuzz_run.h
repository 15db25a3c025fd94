#pragma once

#include "app/language.h"
#include "app/session.h"
#include "core/files.h"
#include "core/settings.h"
#include "core/window.h"
#include "fuzz/draw_length.h"
#include "jobs/clicks.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unistd.h>

namespace sondrix {

using FuzzBytes = std::span<const std::uint8_t>;

// Ends the process, which the fuzzer reports as a finding.
inline void Require(bool holds, std::string_view what, std::string_view value = {}) {
  if (holds) return;
  std::fprintf(stderr, "broken: %.*s: \"%.*s\"\n", static_cast<int>(what.size()), what.data(),
               static_cast<int>(value.size()), value.data());
  std::abort();
}

inline std::string_view TextOf(FuzzBytes bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// What the settings of a run are drawn from; behind the end of the input the bytes are 0.
class Draw {
 public:
  explicit Draw(FuzzBytes input) : bytes_(input.first(std::min(input.size(), DrawLength))) {}
  std::uint8_t Next() { return at_ < bytes_.size() ? bytes_[at_++] : std::uint8_t{0}; }
  // 0 for the first, so that an input of zeros is a plain run.
  template <std::size_t N>
  const char* Pick(const char* const (&texts)[N]) {
    return texts[Next() % N];
  }

 private:
  FuzzBytes bytes_;
  std::size_t at_ = 0;
};

// A folder in memory for this process alone. It goes when the process ends in order.
class FuzzFolder {
 public:
  FuzzFolder() : path_("/dev/shm/sondrix-fuzz." + std::to_string(getpid())) {
    std::filesystem::create_directories(path_ + "/out");
  }
  ~FuzzFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  FuzzFolder(const FuzzFolder&) = delete;
  FuzzFolder& operator=(const FuzzFolder&) = delete;

  std::string Of(std::string_view name) const { return path_ + "/" + std::string(name); }
  void Empty() const {
    for (const auto& entry : std::filesystem::directory_iterator(path_ + "/out"))
      std::filesystem::remove_all(entry.path());
  }

 private:
  std::string path_;
};

inline const FuzzFolder& Folder() {
  static const FuzzFolder folder;
  return folder;
}

// A window that shows nothing. At one pump of the run it clicks what the input chose, and it always ends a
// pause one pump later.
class FuzzWindow : public Window {
 public:
  void SetAtt(std::string_view text, LineKind kind = LineKind::Progress) override {
    att_ = text;
    kind_ = kind;
  }
  std::string_view Att() const override { return att_; }
  LineKind AttKind() const override { return kind_; }
  void RepaintAtt() override {}
  void SetSpd(std::string_view text) override { spd_ = text; }
  std::string_view Spd() const override { return spd_; }
  void ShowField(std::string_view) override {}
  void SetEnabled(std::string_view control, bool on) override {
    if (on) {
      disabled_.erase(std::string(control));
    } else {
      disabled_.emplace(control);
    }
  }
  bool IsEnabled(std::string_view control) const override {
    return !disabled_.contains(std::string(control));
  }
  void SetCaption(std::string_view, std::string_view) override {}
  void SetBusy(bool on) override { isBusy = on; }
  void Pump() override {
    if (run == nullptr) return;
    if (run->state.PauseFlag) PauseClick(*run);
    if (++pumps_ == clickAt) Click();
  }
  void Wait(int) override {}
  bool IsToEnd() const override { return false; }
  void Beep() override {}
  bool Ask(std::string_view, std::string_view) override { return answer; }
  void Inform(std::string_view, std::string_view) override {}

  Run* run = nullptr;
  bool isBusy = false, answer = true;
  int clickAt = 0;  // the pump of the click, from 1; 0 for none
  int click = 0;

 private:
  void Click() {
    switch (click % 6) {
      case 0:
        return StopClick(*run);
      case 1:
        return PauseClick(*run);
      case 2:
        return MarkClick(*run, MarkRelief);
      case 3:
        return MarkClick(*run, MarkFish);
      case 4:
        run->settings.MakeGraf = !run->settings.MakeGraf;
        return GrafClick(*run);
      default:
        CloseClick(*run);
    }
  }

  LineKind kind_ = LineKind::Progress;
  std::string att_, spd_;
  std::set<std::string, std::less<>> disabled_;
  int pumps_ = 0;
};

// Puts the drawn texts, flags and buttons in the place of what a user would have set. ViewOzi stays clear.
inline void DrawSettings(Draw& draw, Session& session, FuzzWindow& window) {
  static constexpr const char* numbers[] = {"",   "0",   "1",      "5",          "100",   "1000",
                                            "-5", "1,5", "3.",     "-90",        "32767", "40000",
                                            "x",  "1e9", "-1e308", "70000000000"};
  static constexpr const char* poi[] = {"0x1000", "", "Y", "0x6616"};
  static constexpr const char* names[] = {"", "a", "a.b", "\xD0\x9E"};
  static constexpr int channels[] = {2, 0, 5, 9};
  Settings& settings = session.settings;
  for (const Field& field : Fields()) {
    if (field.kind != FieldKind::Text || field.name == "Source" || field.name == "TargetPath") continue;
    if (field.name == "DepthMP" || field.name == "TargetName") continue;
    const std::uint8_t pick = draw.Next();
    if (pick != 0) settings.*field.text = numbers[pick % std::size(numbers)];
  }
  settings.DepthMP = draw.Pick(poi);
  settings.TargetName = draw.Pick(names);
  unsigned flags = draw.Next();
  flags |= static_cast<unsigned>(draw.Next()) << 8U;
  for (const Field& field : Fields()) {
    if (field.kind != FieldKind::Flag || field.name == "ViewOzi") continue;
    settings.*field.flag = (flags & 1U) != 0;
    flags >>= 1U;
  }
  if (settings.SaveGraf && draw.Next() % 8 != 0)
    settings.SaveGraf = false;  // a picture for each frame is slow
  settings.EhoSens = MinEhoSens + draw.Next() % (MaxEhoSens - MinEhoSens + 1);
  settings.UseTyp = channels[draw.Next() % std::size(channels)];
  ChannelClick(session.run, ChannelOf(settings.UseTyp).value());
  ApplyLanguage(session, LanguageItems[draw.Next() % LanguageItems.size()].id);
  window.clickAt = draw.Next();
  window.click = draw.Next();
  window.answer = draw.Next() % 2 == 0;
}

// Whether every line of a table that isn't empty has so many columns, or up to spare commas more.
inline void RequireColumns(const std::string& path, std::size_t columns, std::size_t spare = 0) {
  if (!std::filesystem::exists(path)) return;
  const std::string text = ReadWhole(path);
  Require(text.ends_with("\r\n"), "a table ends with a line end", path);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find("\r\n", at);
    const std::string_view line = std::string_view(text).substr(at, end - at);
    const auto commas = static_cast<std::size_t>(std::count(line.begin(), line.end(), ','));
    const bool isWhole = commas + 1 >= columns && commas + 1 <= columns + spare;
    Require(line.empty() || isWhole, "the columns of a line", line);
    at = end + 2;
  }
}

// The whole click on a source of that name, with settings from the input's first bytes. Then the window has
// to be as before the click, no file may be open, and the log line has to tell the end. check looks at the
// outputs by their common path without an extension.
inline int FuzzClick(FuzzBytes input, std::string_view name,
                     void (*check)(const std::string& stem) = nullptr) {
  Draw draw(input);
  FuzzWindow window;
  Session session(window);
  DrawSettings(draw, session, window);
  session.settings.Source = Folder().Of(name);
  session.settings.TargetPath = Folder().Of("out/");
  const FuzzBytes source = input.subspan(std::min(input.size(), DrawLength));
  {
    OutputFile file(session.settings.Source);
    file.Write(source);
    file.Close();
  }
  const std::string target = session.settings.TargetName;

  window.run = &session.run;
  const int handleBefore = dup(0);
  close(handleBefore);
  GoClick(session.run);
  const int handleAfter = dup(0);
  close(handleAfter);
  Require(handleAfter == handleBefore, "all files are closed");
  Require(!window.isBusy && window.IsEnabled("btnGO"), "the window takes another click", window.Att());
  Require(!window.Att().empty() && window.Att() != session.messages.MsgBegin, "the end is told",
          window.Att());
  Require(CloseClick(session.run), "the window can be closed");
  const std::string stem(name.substr(0, name.rfind('.')));
  if (check != nullptr && !window.Att().starts_with(" ! "))
    check(Folder().Of("out/" + (target.empty() ? stem : target)));
  Folder().Empty();
  return 0;
}

}  // namespace sondrix
