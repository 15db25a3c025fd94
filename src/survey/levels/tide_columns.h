#pragma once

#include "survey/levels/fit_crossings.h"
#include "survey/levels/level_fit.h"
#include "survey/levels/robust_fit.h"
#include "survey/levels/tide_constituents.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// What is believed of a tide before any crossing is looked at. Sizes of constituents lie about zero with the
// standard deviation size * TideSpeed::size, so that what the trips don't tell stays small instead of absurd.
struct TideBelief {
  double size = 0;     // metres, of M2's cosine and sine
  double daily = 1;    // by which the daily ones are larger
  double weather = 0;  // metres, the standard deviation by which a trip's level leaves the tide
};

// A constituent whose variance the crossings leave at more than this part of what it was believed to be is
// left out: what they say of it is next to nothing. (Left out at a half, ten trips of a real bay fit each
// other and unseen ones worse.)
inline constexpr double MostUncertain = 0.9;

// The unknowns of a tide's fit: cosine and sine of each constituent at TideEpoch, a constant for each group
// but where there is one, and what the weather made of each trip's level. Beyond MaxTrips weather is left
// out: so many trips tell the tide without.
class TideColumns {
 public:
  static constexpr std::size_t MaxTrips = 200;

  TideColumns(std::span<const TideSpeed> speeds, const TripGroups& groups,
              std::span<const FitCrossing> crossings);

  std::size_t Count() const { return count_; }
  std::size_t TideCount() const { return 2 * speeds_.size(); }
  static std::size_t ColumnOf(std::size_t constituent) { return 2 * constituent; }
  double ConstantOf(std::uint32_t group, std::span<const double> unknowns) const;
  // Whether a column holds for trips that the fit didn't see: tide and constants do, weather doesn't.
  bool IsForAll(std::uint32_t column) const { return column < weather_; }

  FitRows Rows(std::span<const FitCrossing> crossings) const;
  FitRows Beliefs(const TideBelief& belief) const;

  // By constituent: the part of the believed variance that is left. weights: of the rows.
  std::vector<double> UncertainParts(std::span<const FitCrossing> crossings, std::span<const double> weights,
                                     const TideBelief& belief) const;

 private:
  void AddSide(std::uint32_t trip, double time, double sign, std::vector<FitTerm>& terms) const;

  std::vector<TideSpeed> speeds_;
  TripGroups groups_;
  std::vector<std::uint32_t> columnOfTrip_;              // of the weather; count_ where there is none
  std::size_t constants_ = 0, weather_ = 0, count_ = 0;  // where each kind begins
  std::uint32_t groupCount_ = 0;
};

}  // namespace sondrix
