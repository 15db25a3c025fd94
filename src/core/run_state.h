#pragma once

#include "core/channel.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

inline constexpr std::int32_t MarkRelief = 0xFFFF;
inline constexpr std::int32_t MarkFish = 0xFFFF00;

// What lives from one click to the next, and what buttons change during a run.
struct RunState {
  Channel SelectedChannel = Channel::Downscan;
  std::uint32_t ResyncMarker = 0x07800002;
  std::int16_t KnownSamples = 0;
  bool PauseFlag = false;
  bool StopFlag = false;
  std::int32_t MarkRequest = 0;  // 0, MarkRelief or MarkFish
  std::string WaypointText;
  bool AutoName = false;
  std::int32_t DefectPause = 0;  // milliseconds
  bool ShowsResume = false;      // of the pause button: what it shows, whatever PauseFlag is
};

constexpr std::string_view RunSetCaption(const RunState& state) { return state.ShowsResume ? ">>" : "II"; }

}  // namespace sondrix
