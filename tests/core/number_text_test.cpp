#include "core/number_text.h"

#include "core/run_limits.h"
#include "fault_in.h"

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>

namespace sondrix {
namespace {

TEST(NumText, WritesDoubles) {
  // clang-format off
  const std::pair<double, const char*> rows[] = {
      {0, "0"}, {-0.0, "0"}, {0.5, ".5"}, {-0.5, "-.5"}, {-0.25, "-.25"}, {1500, "1500"}, {-1.0, "-1"},
      {0.1 + 0.2, ".3"}, {100.0, "100"}, {1e-9, ".000000001"}, {47.476401245, "47.476401245"},
      {-179.999999999, "-179.999999999"}, {999999.999999999, "999999.999999999"},
      {6655205.48, "6655205.48"}, {1234567.8901, "1234567.8901"}, {1.0 / 3, ".333333333333333"},
      {2.0 / 3, ".666666666666667"}, {3.14159265358979312, "3.14159265358979"},
      {0.012345678901234, ".012345678901234"}, {0.0123456789012345, "1.23456789012345E-02"},
      {1e-15, ".000000000000001"}, {1e-16, "1E-16"}, {-1.5e-17, "-1.5E-17"},
      {999999999999999, "999999999999999"}, {999999999999999.9, "1E+15"}, {1e15, "1E+15"},
      {-1.25e100, "-1.25E+100"}, {std::numeric_limits<double>::max(), "1.79769313486232E+308"},
      {std::numeric_limits<double>::denorm_min(), "4.94065645841247E-324"}};
  // clang-format on
  for (const auto& [value, text] : rows) EXPECT_EQ(NumText(value), text);
}

TEST(NumText, WritesFloats) {
  // clang-format off
  const std::pair<float, const char*> rows[] = {
      {0.0F, "0"}, {0.3F, ".3"}, {-2.5F, "-2.5"}, {0.1F, ".1"}, {16777216.0F, "1.677722E+07"},
      {9999999.0F, "9999999"}, {1e7F, "1E+07"}, {1.0F / 3, ".3333333"}, {3.05F, "3.05"},
      {0.0123456F, ".0123456"}, {0.01234567F, "1.234567E-02"}, {8589973504.0F, "8.589974E+09"}};
  // clang-format on
  for (const auto& [value, text] : rows) EXPECT_EQ(NumText(value), text);
}

// The C library's exact conversion as the judge, over coordinates, odd fractions and every size of number.
TEST(NumText, IsCorrectlyRounded) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 200000; ++i) {
    const std::uint64_t bits = random();
    const double sizes[] = {std::bit_cast<double>(bits), std::ldexp(double(bits), -60),
                            double(bits % 360000000000) / 1e9 - 180, double(bits % 4000000000000) / 1e3};
    const double value = sizes[i % 4];
    if (!std::isfinite(value)) continue;
    char expected[40];
    std::snprintf(expected, sizeof expected, "%.14e", value);
    const std::string text = NumText(value);
    ASSERT_EQ(std::strtod(text.c_str(), nullptr), std::strtod(expected, nullptr)) << text;
    ASSERT_EQ(ValOf(text), std::strtod(expected, nullptr)) << text;
  }
}

TEST(NumText, ShortWaysGiveWhatTheExactOnesDo) {
  std::mt19937_64 random(8);
  for (int i = 0; i < 200000; ++i) {
    const std::uint64_t bits = random();
    // Up to 15 digits with a mark anywhere, and a 32-bit float from a hundredth to a hundred million.
    std::string text = std::to_string(bits % 1000000000000000 >> bits % 50);
    text.insert(std::size_t(bits / 7 % (text.size() + 1)), 1, '.');
    const double value = std::strtod(text.c_str(), nullptr);
    ASSERT_EQ(LocParse(text), value) << text;
    ASSERT_EQ(LocParse("-" + text), -value) << text;
    const auto small = float(std::ldexp(double(bits), int(bits % 33) - 70));
    char expected[40];
    std::snprintf(expected, sizeof expected, "%.6e", static_cast<double>(small));
    ASSERT_EQ(std::strtod(LocText(small).c_str(), nullptr), std::strtod(expected, nullptr)) << expected;
  }
}

TEST(LocText, PutsAZeroBeforeThePoint) {
  for (const auto& [value, text] : std::map<double, std::string>{
           {0.5, "0.5"}, {-0.25, "-0.25"}, {1.0 / 3, "0.333333333333333"}, {0, "0"}, {12, "12"}})
    EXPECT_EQ(LocText(value), text);
  EXPECT_EQ(LocText(0.25F), "0.25");
  for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    EXPECT_EQ(FaultIn([&] { NumText(value); }), 6);
    EXPECT_EQ(FaultIn([&] { LocText(static_cast<float>(value)); }), 6);
  }
}

TEST(ValOf, ReadsTheLongestPrefix) {
  // clang-format off
  const std::pair<const char*, double> rows[] = {
      {"", 0}, {"abc", 0}, {".", 0}, {"-", 0}, {"12.5", 12.5}, {"-.25x", -0.25}, {"+7", 7}, {"1,5", 1},
      {"1.2.3", 1.2}, {" 1 2 . 5 ", 12.5}, {"5.", 5}, {"1e3", 1000}, {"1E-2z", 0.01}, {"3E", 3}, {"3E+", 3},
      {"--1", 0}, {"nan", 0}, {"45.12345*", 45.12345}, {"1E-999", 0}, {"0E999", 0}, {"1E999", HUGE_VAL},
      {"-1E999", -HUGE_VAL}, {"\t8\xC2\xA0" "9", 89}};
  // clang-format on
  for (const auto& [text, value] : rows) EXPECT_EQ(ValOf(text), value) << text;
}

TEST(LocParse, TakesNumbersAndNothingElse) {
  // clang-format off
  const std::pair<const char*, double> good[] = {
      {"1,5", 1.5}, {"1.5", 1.5}, {" -0,25 ", -0.25}, {"+.5", 0.5}, {",5", 0.5}, {"1 234 567,5", 1234567.5},
      {"1\xC2\xA0" "234", 1234}, {"1\xA0" "234", 1234}, {"5.", 5}, {"1E3", 1000}, {"1,5e-2", 0.015}, {"0001", 1}, {"1e-400", 0},
      {"123456789012345678", 123456789012345678.0}};
  // clang-format on
  for (const auto& [text, value] : good) {
    EXPECT_TRUE(IsNumeric(text) && NumberOf(text) == value) << text;
    EXPECT_EQ(LocParse(text), value) << text;
  }
  for (const char* bad : {"",    " ",  "-",  ".",  ",",    "1.2,3", "1..2", "--1", "- 1",  "1E",
                          "1E+", "E5", "1x", "x1", "1 ,5", "1, 5",  "inf",  "nan", "0x10", "5-"}) {
    EXPECT_TRUE(!IsNumeric(bad) && NumberOf(bad) == 0) << bad;
    EXPECT_EQ(FaultIn([&] { LocParse(bad); }), 13) << bad;
  }
  EXPECT_EQ(FaultIn([] { LocParse("1E999"); }), 6);
  EXPECT_FALSE(IsNumeric("-1E999"));
  const std::string long0(400, '0');
  EXPECT_EQ(LocParse("0," + long0 + "1"), 0);
  EXPECT_EQ(LocParse("0," + long0 + "1E401"), 1);
  EXPECT_EQ(FaultIn([&] { LocParse("1" + long0); }), 6);
}

TEST(PadDecimals, FillsUpToTheWidth) {
  const char* const rows[][2] = {{"12", "12.00"},      {"12.5", "12.50"}, {"12.25", "12.25"},
                                 {"12.345", "12.345"}, {"", ".00"},       {".3", ".30"}};
  for (const auto& row : rows) EXPECT_EQ(PadDecimals(row[0], 2), row[1]);
  EXPECT_EQ(PadDecimals("12", 0), "12.0");
}

}  // namespace
}  // namespace sondrix
