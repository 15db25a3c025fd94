#include "core/rounding.h"

#include "core/depth_text.h"
#include "core/settings.h"
#include "fault_in.h"
#include "test_window.h"

#include <cmath>
#include <gtest/gtest.h>
#include <tuple>

namespace sondrix {
namespace {

TEST(Rounding, GoesTheNamedWayOnTies) {
  const std::tuple<double, int, double, double> rows[] = {// RoundTo, RoundEven
                                                          {2.5, 0, 3, 2},
                                                          {-2.5, 0, -2, -2},
                                                          {0.25, 1, 0.3, 0.2},
                                                          {-2.6, 0, -3, -3},
                                                          {1234, -2, 1200, 1200}};
  for (const auto& [x, digits, up, even] : rows) {
    EXPECT_EQ(RoundTo(x, digits), up) << x;
    EXPECT_EQ(RoundEven(x, digits), even) << x;
  }
  for (const double x : {std::nan(""), HUGE_VAL, 1e308}) {
    EXPECT_EQ(FaultIn([&] { RoundTo(x, 9); }), 6);
    EXPECT_EQ(FaultIn([&] { RoundEven(x, 9); }), 6);
  }
}

TEST(Rounding, WholeNumbersFitTheirWidthOrFault) {
  EXPECT_TRUE(ToWhole(3.5) == 4 && ToWhole(2.5) == 2 && ToWhole(-0x1p63) == INT64_MIN);
  EXPECT_TRUE(ToWhole32(2147483647.49) == INT32_MAX && ToWhole16(-32768.5) == INT16_MIN && ToByte(-0.5) == 0);
  EXPECT_EQ(FaultIn([] { ToByte(255.5); }), 6);
  EXPECT_EQ(FaultIn([] { ToWhole16(32767.5); }), 6);
  EXPECT_EQ(FaultIn([] { ToWhole32(-2147483649.0); }), 6);
  for (const double x : {0x1p63, std::nan("")}) EXPECT_EQ(FaultIn([&] { ToWhole(x); }), 6);
}

TEST(Ft2Mt, GivesMetresAsText) {
  const std::tuple<float, float, bool, const char*> rows[] = {
      {0, 0.3F, false, "0"}, {10, 0, true, "3"}, {10, -0.5F, false, "2.55"}, {-1, 0, false, "-.3"}};
  Settings settings;
  TestWindow window;
  for (const auto& [feet, addMetres, useDcm, text] : rows) {
    settings.UseDcm = useDcm;
    EXPECT_EQ(Ft2Mt(feet, addMetres, 2, settings, window), text) << feet;
  }
  EXPECT_EQ(window.Att(), "");
  EXPECT_EQ(Ft2Mt(std::nanf(""), 0, 2, settings, window), "");
  EXPECT_EQ(window.Att(), "ошибка Ft2Mt 6: Overflow");
}

}  // namespace
}  // namespace sondrix
