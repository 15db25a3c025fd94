#pragma once

#include "core/date_time.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace sondrix {

inline constexpr std::chrono::milliseconds LookTime{30};

// What was seen of a channel.
struct ChannelSummary {
  std::uint8_t channel = 0;
  std::int64_t frames = 0, withDepth = 0;
  std::int32_t firstIndex = 0, lastIndex = 0;
};

// What an echogram holds, by the frames that were looked at: all of them or, of a long one, a sample from its
// start, its end and places between.
struct SourceSummary {
  std::int64_t bytes = 0;
  bool isWhole = false;
  std::int64_t frames = 0;
  std::vector<ChannelSummary> channels;            // by their numbers
  std::optional<DateSeconds> firstTime, lastTime;  // none where the recording tells no date
  std::optional<float> leastDepth, greatestDepth;  // metres
};

// Takes about as long as it is given, however long the file. Faults as of a source that can't be opened or
// read; 6 for a format word that is none.
SourceSummary LookAtEchogram(std::string_view path, std::chrono::milliseconds time = LookTime);

}  // namespace sondrix
