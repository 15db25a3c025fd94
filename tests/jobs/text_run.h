#pragma once

#include "test_run.h"

#include <regex>

namespace sondrix {

// A run of a text job with every threshold at 0.
struct TextRun : TestRun {
  TextRun() { settings.DepthDiff = settings.MaxDiff = "0"; }

  std::string ClickOn(const std::string& name, std::string_view text, int channel = 2) {
    Source(name, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
    return Click(channel);
  }
  // An output with the dates and times of the clock masked.
  std::string Masked(const std::string& name) const {
    static const std::regex clock(R"(\d\d-[A-Z][a-z][a-z]-\d\d,\d\d:\d\d:\d\d)");
    return std::regex_replace(Out(name), clock, "<clock>");
  }
  bool HasNoOutput() const { return std::filesystem::is_empty(folder / "out"); }
};

}  // namespace sondrix
