#pragma once

#include "core/run_limits.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace sondrix {

// In what the filters of two jobs differ.
struct FilterRules {
  int startSegment;           // of the track, before the first sounding
  bool segmentFollowsGap;     // each sounding sets the segment anew; otherwise a gap raises it
  bool pointEndsSegment;      // the segment falls back to 0 behind a point
  bool firstPointNeedsNoWay;  // the first sounding is selected whatever way lies behind it
};
extern const FilterRules CsvFilterRules;
extern const FilterRules LogFilterRules;

// What a job offers.
struct OfferedSounding {
  std::string_view x, y;     // number texts, Mercator metres
  float depth = 0;           // metres
  bool isRejected = false;   // by the job's own tests: it counts in the sums and is no point
  bool endsSegment = false;  // if rejected: the next point starts a segment of the track
};

enum class Outcome { Repeat, Rejected, NotSelected, Selected };

struct Verdict {
  Outcome outcome = Outcome::Repeat;
  float way = 0;     // since the last selected point, metres
  bool gap = false;  // that way is longer than the limit
  int segment = 0;   // 1: the point starts a segment of the track
};

// Selects the soundings that a chart needs: those that are far enough from the last point, by the way
// travelled and by the change of depth.
class PointFilter {
 public:
  PointFilter(const FilterRules& rules, const RunLimits& limits);

  // The verdict about a sounding, which is read only if both texts of the position aren't those of the last
  // one read. Fault 13 for a position that is no number, fault 6 where a value doesn't fit its width.
  Verdict Offer(std::string_view xText, std::string_view yText, const std::function<OfferedSounding()>& read);

  double X() const { return x_; }  // of the last sounding read, Mercator metres
  double Y() const { return y_; }
  std::int32_t Selected() const { return selected_; }  // points so far

 private:
  void MoveTo(const OfferedSounding& sounding);
  Verdict Judge(const OfferedSounding& sounding);

  const FilterRules& rules_;
  float minDist_, depthStep_, maxDist_;
  double x_ = 0, y_ = 0;
  std::int32_t prevX_ = 0, prevY_ = 0;  // the same in whole metres
  std::string prevXText_, prevYText_;
  float stepDist_ = 0;   // from the sounding before, metres; kept while it can't be computed
  float accDist_ = 0;    // way since the last selected point, metres
  float accDepth_ = 0;   // signed sum of depth changes since then, metres
  float prevDepth_ = 0;  // metres
  int segment_ = 0;
  std::int32_t selected_ = 0;
};

}  // namespace sondrix
