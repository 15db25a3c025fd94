#include "core/rounding.h"

#include "core/depth_text.h"
#include "core/fault.h"
#include "core/settings.h"
#include "test_window.h"

#include <cmath>
#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(Rounding, GoesTheNamedWayOnTies) {
  const struct {
    double x;
    int digits;
    double up, even;  // RoundTo, RoundEven
  } rows[] = {{2.5, 0, 3, 2},      {-2.5, 0, -2, -2},      {-2.6, 0, -3, -3},         {3.5, 0, 4, 4},
              {0.25, 1, 0.3, 0.2}, {-0.25, 1, -0.2, -0.2}, {1.0625, 3, 1.063, 1.062}, {1234, -2, 1200, 1200}};
  for (const auto& row : rows) {
    EXPECT_EQ(RoundTo(row.x, row.digits), row.up) << row.x;
    EXPECT_EQ(RoundEven(row.x, row.digits), row.even) << row.x;
  }
}

TEST(Rounding, WholeNumbersFitTheirWidthOrFault) {
  EXPECT_EQ(ToWhole(3.5), 4);
  EXPECT_EQ(ToWhole(2.5), 2);
  EXPECT_EQ(ToWhole(-2.5), -2);
  EXPECT_EQ(ToWhole(-9223372036854775808.0), INT64_MIN);
  EXPECT_EQ(ToWhole32(2147483647.49), INT32_MAX);
  EXPECT_EQ(ToWhole16(-32768.5), INT16_MIN);
  EXPECT_EQ(ToByte(-0.5), 0);
  EXPECT_THROW(ToByte(255.5), Fault);
  EXPECT_THROW(ToWhole16(32767.5), Fault);
  EXPECT_THROW(ToWhole32(-2147483649.0), Fault);
  EXPECT_THROW(ToWhole(9223372036854775808.0), Fault);
  EXPECT_THROW(ToWhole(std::nan("")), Fault);
}

TEST(Rounding, WhatIsNotFiniteIsAnOverflow) {
  for (const double x : {std::nan(""), HUGE_VAL, 1e308}) {
    EXPECT_THROW(RoundTo(x, 9), Fault);
    EXPECT_THROW(RoundEven(x, 9), Fault);
  }
}

TEST(Ft2Mt, GivesMetresAsText) {
  const struct {
    float feet, addMetres;
    bool useDcm;
    const char* text;
  } rows[] = {{0, 0.3F, false, "0"}, {10, 0, false, "3.05"},     {10, 0, true, "3"},
              {1, 0, false, ".3"},   {10, -0.5F, false, "2.55"}, {1.15F, 0, false, ".35"},
              {-1, 0, false, "-.3"}, {1, -0.3048F, false, "0"}};
  Settings settings;
  TestWindow window;
  for (const auto& row : rows) {
    settings.UseDcm = row.useDcm;
    EXPECT_EQ(Ft2Mt(row.feet, row.addMetres, 2, settings, window), row.text) << row.feet;
  }
  EXPECT_EQ(window.Att(), "");
  EXPECT_EQ(Ft2Mt(std::nanf(""), 0, 2, settings, window), "");
  EXPECT_EQ(window.Att(), "ошибка Ft2Mt 6: Overflow");
}

}  // namespace
}  // namespace sondrix
