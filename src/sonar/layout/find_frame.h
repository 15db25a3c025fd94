#pragma once

#include "core/channel.h"
#include "core/fault.h"
#include "sonar/layout/sl_source.h"
#include "sonar/layout/words.h"

#include <cstdint>

namespace sondrix {

// The search for the next frame behind a damage, by the marker of its head: word after word, and from time to
// time with a leap, so that a long damage is soon passed.

// The word that stands at offset 0x20 of an SL2 frame of 1920 samples of the channel.
std::uint32_t ResyncMarkerOf(Channel channel);
inline constexpr std::int64_t MarkerOffset = 0x20;

// At which offset of a bad frame its search begins.
inline constexpr std::int64_t SearchStart = 0x22;

struct FrameSearch {
  std::int64_t At = 0;         // index of the source's array that is looked at next
  std::int64_t ScanCount = 0;  // bytes searched since the last leap, be it in an earlier search
};

struct SearchStep {
  bool found = false;         // the marker stands at At, the frame MarkerOffset before
  bool isReportDue = false;   // once in a hundred bytes
  bool isPastEnd = false;     // a leap led beyond the file: there is nothing more to search
  std::int64_t position = 0;  // in the file, of what the search has come to, without the leap
};

// Looks at one place and goes on to the next. Fault 9 at the end of the array or of the file.
inline SearchStep StepSearch(FrameSearch& search, SlSource& source, std::uint32_t marker) {
  constexpr std::int64_t stepLength = 2;
  constexpr std::int64_t reportLength = 100;
  constexpr std::int64_t leapShare = 100;  // a leap for every hundredth of the file that was searched
  SearchStep step;
  if (search.At + 4 > SlSource::ChunkLength + 1) throw Fault(FaultNumber::Subscript);
  step.found = U32At(source.Bytes(search.At, 4).data()) == marker;
  if (step.found) return step;
  search.At += stepLength;
  search.ScanCount += stepLength;
  step.position = source.BaseOffset + search.At;
  step.isReportDue = search.ScanCount % reportLength == 0;
  if (search.ScanCount * leapShare > source.FileLength()) {
    search.At += search.ScanCount;
    step.isPastEnd = source.BaseOffset + search.At > source.FileLength();
    if (!step.isPastEnd) search.ScanCount = 0;
  }
  return step;
}

}  // namespace sondrix
