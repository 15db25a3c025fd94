#pragma once

#include "core/run_limits.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

// In what the filters of two jobs differ.
struct FilterRules {
  int startSegment;           // SegmentCode before the first sounding
  bool segmentFollowsGap;     // each sounding sets SegmentCode anew; otherwise a gap raises it
  bool pointEndsSegment;      // SegmentCode falls back to 0 once a point is written
  bool firstPointNeedsNoWay;  // the first sounding is selected whatever way lies behind it
};
extern const FilterRules CsvFilterRules;
extern const FilterRules LogFilterRules;

// Selects the soundings that a chart needs. A job asks for each sounding IsRepeat, and if it is none, calls
// Offer, then does its own tests, and asks Select if these let the sounding pass.
struct PointFilter {
  PointFilter(const FilterRules& theRules, const RunLimits& limits);

  // Whether both texts of the position are those of the last sounding offered.
  bool IsRepeat(std::string_view xText, std::string_view yText) const;
  // Takes a sounding into the sums: a position as number texts of Mercator metres, a depth in metres. Fault
  // 13 for a text that is no number, fault 6 where a value doesn't fit its width.
  void Offer(std::string_view xText, std::string_view yText, float depth);
  // Whether the sounding offered last is a point; if so, the sums start anew.
  bool Select();
  // The selected point is written.
  void PointWritten();

  double X = 0, Y = 0;                // of the last sounding offered, Mercator metres
  std::int32_t PrevX = 0, PrevY = 0;  // the same in whole metres
  std::string PrevXText, PrevYText;
  float StepDist = 0;         // from the sounding before, metres; kept while it can't be computed
  float AccDist = 0;          // way since the last selected point, metres
  float AccDepth = 0;         // signed sum of depth changes since then, metres
  float PrevDepth = 0;        // metres
  bool Gap = false;           // that way is longer than the limit
  int SegmentCode = 0;        // 1: a point now starts a segment of the track
  std::int32_t Selected = 0;  // points so far

 private:
  const FilterRules& rules_;
  float minDist_, depthStep_, maxDist_;
};

}  // namespace sondrix
