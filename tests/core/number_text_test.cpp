#include "core/number_text.h"

#include "core/depth_report.h"
#include "core/depth_text.h"
#include "core/rounding.h"
#include "core/run_limits.h"
#include "core/settings.h"
#include "fault_in.h"
#include "test_window.h"

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <tuple>

namespace sondrix {
namespace {

TEST(NumText, WritesNumbers) {
  // clang-format off
  const std::pair<double, const char*> doubles[] = {
      {-0.0, "0"}, {0.5, ".5"}, {-0.25, "-.25"}, {1500, "1500"}, {0.1 + 0.2, ".3"}, {1e-9, ".000000001"},
      {-179.999999999, "-179.999999999"}, {1.0 / 3, ".333333333333333"}, {2.0 / 3, ".666666666666667"},
      {0.012345678901234, ".012345678901234"}, {0.0123456789012345, "1.23456789012345E-02"},
      {1e-15, ".000000000000001"}, {-1.5e-17, "-1.5E-17"}, {999999999999999, "999999999999999"},
      {999999999999999.9, "1E+15"}, {-1.25e100, "-1.25E+100"},
      {std::numeric_limits<double>::denorm_min(), "4.94065645841247E-324"}};
  const std::pair<float, const char*> floats[] = {
      {0.3F, ".3"}, {-2.5F, "-2.5"}, {16777216.0F, "1.677722E+07"}, {9999999.0F, "9999999"}, {1e7F, "1E+07"},
      {1.0F / 3, ".3333333"}, {0.0123456F, ".0123456"}, {0.01234567F, "1.234567E-02"}};
  // clang-format on
  for (const auto& [value, text] : doubles) EXPECT_EQ(NumText(value), text);
  for (const auto& [value, text] : floats) EXPECT_EQ(NumText(value), text);
  EXPECT_EQ(LocText(-0.25) + " " + LocText(0.25F) + " " + LocText(12.0), "-0.25 0.25 12");
  for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    EXPECT_EQ(FaultIn([&] { NumText(value); }), 6);
    EXPECT_EQ(FaultIn([&] { LocText(static_cast<float>(value)); }), 6);
  }
}

// The C library's exact conversion as the judge.
void ExpectSame(double read, double value, const char* format) {
  char expected[40];
  std::snprintf(expected, sizeof expected, format, value);
  EXPECT_EQ(read, std::strtod(expected, nullptr)) << expected;
}

// Over coordinates, odd fractions and every size of number; over what has a mark anywhere in up to 15 digits,
// and over 32-bit floats from a hundredth to a hundred million, which go short ways.
TEST(NumText, IsCorrectlyRounded) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 200000; ++i) {
    if (HasFailure()) return;
    const std::uint64_t bits = random();
    const double sizes[] = {std::bit_cast<double>(bits), std::ldexp(double(bits), -60),
                            double(bits % 360000000000) / 1e9 - 180, double(bits % 4000000000000) / 1e3};
    if (!std::isfinite(sizes[i % 4])) continue;
    const std::string number = NumText(sizes[i % 4]);
    ExpectSame(std::strtod(number.c_str(), nullptr), sizes[i % 4], "%.14e");
    ExpectSame(ValOf(number), sizes[i % 4], "%.14e");
    std::string text = std::to_string(bits % 1000000000000000 >> bits % 50);
    text.insert(std::size_t(bits / 7 % (text.size() + 1)), 1, '.');
    ASSERT_EQ(LocParse("-" + text), -std::strtod(text.c_str(), nullptr)) << text;
    const auto small = float(std::ldexp(double(bits), int(bits % 33) - 70));
    ExpectSame(std::strtod(LocText(small).c_str(), nullptr), static_cast<double>(small), "%.6e");
  }
}

TEST(ValOf, ReadsTheLongestPrefix) {
  // clang-format off
  const std::pair<const char*, double> rows[] = {
      {"", 0}, {"abc", 0}, {".", 0}, {"-.25x", -0.25}, {"+7", 7}, {"1,5", 1}, {"1.2.3", 1.2},
      {"1E-2z", 0.01}, {"3E+", 3}, {"1E2.5", 100}, {"--1", 0}, {"nan", 0}, {"1E-999", 0}, {"0E999", 0}, {"-1E999", -HUGE_VAL},
      {" 1 2 . 5 ", 12.5}, {"\t8\xC2\xA0" "9", 89}};
  // clang-format on
  for (const auto& [text, value] : rows) EXPECT_EQ(ValOf(text), value) << text;
}

TEST(LocParse, TakesNumbersAndNothingElse) {
  const std::string long0(400, '0');
  // clang-format off
  const std::pair<std::string, double> good[] = {
      {"1,5", 1.5}, {"1.5", 1.5}, {"7", 7}, {"-12", -12}, {" -0,25 ", -0.25}, {"+.5", 0.5}, {"1 234 567,5", 1234567.5},
      {"1\xC2\xA0" "234", 1234}, {"1\xA0" "234", 1234}, {"5.", 5}, {"1,5e-2", 0.015}, {"1E2 ", 100}, {"1e-400", 0},
      {"123456789012345678", 123456789012345678.0}, {"0," + long0 + "1", 0}, {"0," + long0 + "1E401", 1}};
  // clang-format on
  for (const auto& [text, value] : good) {
    EXPECT_TRUE(IsNumeric(text) && NumberOf(text) == value) << text;
    EXPECT_EQ(LocParse(text), value) << text;
  }
  for (const char* bad :
       {"", " ", "-", ",", "1.2,3", "1..2", "--1", "- 1", "1E", "E5", "1x", "1 ,5", "1, 5", "inf", "0x10"}) {
    EXPECT_TRUE(!IsNumeric(bad) && NumberOf(bad) == 0) << bad;
    EXPECT_EQ(FaultIn([&] { LocParse(bad); }), 13) << bad;
  }
  for (const std::string& large : {std::string("-1E999"), "1" + long0}) {
    EXPECT_FALSE(IsNumeric(large));
    EXPECT_EQ(FaultIn([&] { LocParse(large); }), 6);
  }
}

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
