#include "core/rounding.h"

#include "fault_in.h"

#include <cmath>
#include <gtest/gtest.h>
#include <tuple>

namespace sondrix {
namespace {

TEST(Rounding, GoesTheNamedWayOnTies) {
  // What is rounded, to how many digits; a tie upwards and to the even one.
  const std::tuple<double, int, double, double> rows[] = {
      {2.5, 0, 3, 2}, {-2.5, 0, -2, -2}, {0.25, 1, 0.3, 0.2}, {-2.6, 0, -3, -3}, {1234, -2, 1200, 1200}};
  for (const auto& [x, digits, up, even] : rows) {
    EXPECT_EQ(RoundTo(x, digits), up) << x;
    EXPECT_EQ(RoundEven(x, digits), even) << x;
  }
  for (const double x : {std::nan(""), HUGE_VAL, 1e308}) {
    EXPECT_EQ(FaultIn([&] { RoundTo(x, 9); }), 6);
    EXPECT_EQ(FaultIn([&] { RoundEven(x, 9); }), 6);
  }
}

}  // namespace
}  // namespace sondrix
