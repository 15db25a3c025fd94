#pragma once

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
};

struct EndRow {
  std::string text, end;
  int channel = 2;
};

// Sources and the last line of their run, which is a refusal without any output or a report.
inline void CheckEnds(const std::string& name, const std::vector<EndRow>& rows) {
  for (const auto& [text, end, channel] : rows) {
    SCOPED_TRACE(text.substr(0, 200));
    TextRun test;
    const bool refused = end.starts_with(" ! ");
    EXPECT_EQ(test.ClickOn(name, text, channel), end);
    EXPECT_EQ(std::filesystem::is_empty(test.folder / "out"), refused);
    EXPECT_EQ(test.window.beeps, refused ? 1 : 0);
    EXPECT_TRUE(test.window.IsEnabled("btnGO"));
  }
}

}  // namespace sondrix
