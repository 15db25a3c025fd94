#pragma once

#include "chart/grid.h"
#include "chart/shore.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sondrix {

// A sounding in the chart's projection, in the order in which it was recorded.
struct PlaneSounding {
  double x = 0, y = 0;  // metres
  float depth = 0;      // metres, positive down, corrected
  bool beginsLine = false;
};

// Chosen: a weighted mean of splines; Spline: the best one of them.
enum class ModelMethod { Chosen, Spline };

struct ModelOptions {
  std::optional<double> cell, reach;  // metres
  ModelMethod method = ModelMethod::Chosen;
  std::optional<double> tension;  // 0 to 1
  const Shore* shore = nullptr;
  int threads = 1;
  std::function<bool()> isToEnd = {};                     // asked now and then; then EndAsked is thrown
  std::function<void(std::string_view step)> begin = {};  // told of what takes long, in words for a user
};

// What was chosen, and how well it did.
struct ModelAccount {
  double cell = 0, reach = 0, lineSpacing = 0;  // metres
  std::size_t soundings = 0, thinned = 0, lines = 0;
  std::string method;       // in words for a user
  std::string members;      // the splines and their weights, which may be negative
  double leftOutError = 0;  // root mean square at the lines left out, metres; not a number: no lines
  std::size_t leftOut = 0;  // soundings that were predicted
};

// Why there is no depth model, in words for a line.
class CantModel : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A model and how it came about. The soundings are those used, trip by trip; they are taken, so that their
// memory is free again before the grid is solved. CantModel, EndAsked. The same for any number of threads.
struct MadeModel {
  DepthModel model;
  ModelAccount account;
};
MadeModel MakeDepthModel(std::vector<PlaneSounding> soundings, const ModelOptions& options);

}  // namespace sondrix
