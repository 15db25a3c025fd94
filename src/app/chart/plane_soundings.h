#pragma once

#include "chart/depth_model.h"
#include "chart/transform.h"
#include "survey/survey.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace sondrix {

class FarPlaces;

// The zone of most soundings used that aren't far, as "EPSG:n"; empty where there are none.
std::string ZoneOfMost(const Survey& survey, const FarPlaces& far);

struct PlaneOptions {
  int threads = 1;
  std::function<Transform()> makeToPlane;     // called in each thread
  std::function<bool()> isToEnd;              // asked now and then; then EndAsked is thrown
  std::atomic<std::int64_t>* done = nullptr;  // soundings so far
};

// The soundings of a survey that a chart is made of, in the order of the trips: those used, but for those far
// from the rest and those that have no place in the projection. Where others between two of them are left
// out, a line goes on. The same for any number of threads.
std::vector<PlaneSounding> PlaneSoundingsOf(const Survey& survey, const FarPlaces& far,
                                            const PlaneOptions& options);

}  // namespace sondrix
