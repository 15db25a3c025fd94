#include "core/rounding.h"

#include "core/depth_report.h"
#include "core/depth_text.h"
#include "core/settings.h"
#include "fault_in.h"
#include "test_window.h"

#include <cmath>
#include <cstdlib>
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
  for (int digits = -22; digits <= 22; ++digits)
    EXPECT_EQ(PowerOfTen(digits), std::strtod(("1e" + std::to_string(digits)).c_str(), nullptr));
  EXPECT_EQ(PowerOfTen(23), std::pow(10.0, 23));
}

TEST(Rounding, AWidthHasItsLimits) {
  // Whether a byte and 16, 32 and 64 bits take a number.
  std::string taken;
  const auto take = [&taken](auto&& whole, double x) {
    taken += FaultIn([&] { EXPECT_EQ(static_cast<double>(whole(x)), std::nearbyint(x)); }) == 6 ? '-' : '+';
  };
  for (const double x : {255.4, 255.5, -0.5, -0.6, 32767.4, 32767.5, -32768.5, -32768.6, 2147483647.4,
                         2147483647.5, -2147483648.5, -2147483648.6, 9223372036854774784.0,
                         9223372036854775808.0, -9223372036854775808.0, -9223372036854777856.0}) {
    take(ToByte, x), take(ToWhole16, x), take(ToWhole32, x), take(ToWhole, x);
    taken += ' ';
  }
  EXPECT_EQ(taken, "++++ -+++ ++++ -+++ -+++ --++ -+++ --++ --++ ---+ --++ ---+ ---+ ---- ---+ ---- ");
}

TEST(Ft2Mt, AddsAndRounds) {
  const std::tuple<float, float, bool, const char*> rows[] = {
      {10, 0, false, "3.05"}, {10, 0.25F, true, "3.3"}, {0, 1, false, "0"}, {1, -1, false, "-.7"}};
  for (const auto& [feet, add, toDecimetres, text] : rows) EXPECT_EQ(Ft2Mt(feet, add, 2, toDecimetres), text);
  TestWindow window;
  Settings settings;
  EXPECT_EQ(Ft2MtOrReport(10, 0, 2, settings, window) + window.att, "3");
  EXPECT_EQ(Ft2MtOrReport(HUGE_VALF, 0, 2, settings, window), "");
  EXPECT_EQ(window.att, "ошибка Ft2Mt 6: Overflow");
  EXPECT_EQ(window.kind, LineKind::Fault);
}

}  // namespace
}  // namespace sondrix
