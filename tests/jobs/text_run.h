#pragma once

#include "core/number_text.h"
#include "test_run.h"

#include <regex>

namespace sondrix {

inline std::span<const std::uint8_t> BytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// A text with each of that character replaced by a line end.
inline std::string WithLineEnd(std::string text, char mark, const std::string& end) {
  for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos; at += end.size()) {
    text.replace(at, 1, end);
  }
  return text;
}

// A run of a text job with every threshold at 0.
struct TextRun : TestRun {
  TextRun() { settings.DepthDiff = settings.MaxDiff = "0"; }

  std::string ClickOn(const std::string& name, std::string_view text, int channel = 2) {
    Source(name, BytesOf(text));
    return Click(channel);
  }
  // An output with the dates and times of the clock masked.
  std::string Masked(const std::string& name) const {
    static const std::regex clock(R"(\d\d-[A-Z][a-z][a-z]-\d\d,\d\d:\d\d:\d\d)");
    return std::regex_replace(Out(name), clock, "<clock>");
  }
  bool HasNoOutput() const { return std::filesystem::is_empty(folder / "out"); }
  void RecordTrack() {
    settings.ViewOzi = true;
    link.ShowTrack = [this](std::int32_t track) { calls += "track " + std::to_string(track) + "|"; };
    link.CreateTrackPoint = [this](std::int32_t, std::int32_t code, double lat, double lon, double feet,
                                   double) {
      calls += std::to_string(code) + " " + NumText(lat) + " " + NumText(lon) + " " + NumText(feet) + "|";
    };
    link.IsPositionOnMap = [](double, double) { return 0; };
  }

  std::string calls;
};

using Ends = std::vector<std::pair<std::string, std::string>>;

// Sources that end a run with a message, and without any output.
inline void CheckRefusals(const std::string& name, const Ends& rows) {
  for (const auto& [text, end] : rows) {
    TextRun test;
    EXPECT_EQ(test.ClickOn(name, text), end) << text;
    EXPECT_TRUE(test.HasNoOutput() && test.window.IsEnabled("btnGO")) << text;
    EXPECT_EQ(test.window.beeps, 1) << text;
  }
}

}  // namespace sondrix
