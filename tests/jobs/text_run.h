#pragma once

#include "core/date_time.h"
#include "core/number_text.h"
#include "test_run.h"

#include <cmath>
#include <regex>

namespace sondrix {

inline std::span<const std::uint8_t> BytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// A text with each of that character replaced by a line end.
inline std::string WithLineEnd(std::string text, char mark, const std::string& end) {
  for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos; at += end.size())
    text.replace(at, 1, end);
  return text;
}

// A run of a text job with every threshold at 0.
struct TextRun : TestRun {
  TextRun() {
    settings.DepthDiff = settings.MaxDiff = "0";
    link.ShowTrack = [this](std::int32_t track) { calls += "track " + std::to_string(track) + '\n'; };
    link.CreateTrackPoint = [this](std::int32_t, std::int32_t code, double lat, double lon, double feet,
                                   double date) {
      const double days = DayCount(ClockNow()) - date;
      EXPECT_TRUE(date == std::floor(date) && days >= 0 && days < 1.1) << date;
      for (const double number : {static_cast<double>(code), lat, lon, feet}) calls += LocText(number) + ' ';
    };
  }

  std::string ClickOn(const std::string& name, std::string_view text, int channel = 2) {
    Source(name, BytesOf(text));
    return Click(channel);
  }
  // All that the run left and told the map program, with the dates and times of the clock masked.
  std::string MaskedRecord() {
    static const std::regex clock(R"(\d\d-[A-Z][a-z][a-z]-\d\d,\d\d:\d\d:\d\d)");
    window.waited = 0;  // which a slow machine may do
    return std::regex_replace(Record(), clock, "<clock>") + calls;
  }

  std::string calls;  // of the map program
};

struct RunRow {
  std::string text, end;     // a source, and the last line of its run
  std::uint64_t digest = 0;  // of what the run left; 0 for a refusal, which leaves nothing
  std::string fields = {};
  int channel = 2;
};

// Each source in a run of its own. A source with the clock's times is masked.
inline void CheckRuns(const std::string& name, bool hasClock, const std::vector<RunRow>& rows) {
  for (const auto& [text, end, digest, fields, channel] : rows) {
    SCOPED_TRACE(fields + ": " + text.substr(0, 200));
    TextRun test;
    test.Set(fields);
    EXPECT_EQ(test.ClickOn(name, text, channel), end);
    EXPECT_TRUE(test.window.IsEnabled("btnGO"));
    EXPECT_EQ(test.window.beeps, digest == 0 ? 1 : 0);
    if (digest == 0) {
      EXPECT_TRUE(end.starts_with(" ! ") && std::filesystem::is_empty(test.folder / "out"));
    } else {
      EXPECT_TRUE(HasDigest(hasClock ? test.MaskedRecord() : test.Record() + test.calls, digest));
    }
  }
}

}  // namespace sondrix
