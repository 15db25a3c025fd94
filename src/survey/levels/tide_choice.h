#pragma once

#include "survey/levels/tide_columns.h"

#include <span>

namespace sondrix {

struct TideChoice {
  TideBelief belief;
  double leftOutMisfit = 0;       // metres, mean absolute
  bool isBetterThanNone = false;  // than no tide at all
};

// The belief with which trips that are left out, each in its turn, are predicted best by the tide alone: no
// fit to what is at hand tells a tide from noise, only trips that it hasn't seen do (cross-validation: M.
// Stone, 1974). Beyond Folds trips they are left out together. rows: of the columns; weights: theirs, from a
// robust fit.
TideChoice ChooseTideBelief(const TideColumns& columns, std::span<const FitCrossing> crossings,
                            const FitRows& rows, std::span<const double> weights);

}  // namespace sondrix
