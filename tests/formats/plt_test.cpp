#include "formats/plt.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(Plt, HeadCountsThePoints) {
  EXPECT_EQ(PltHead("a,b", 17),
            "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\nAltitude is in Feet\r\nReserved 3\r\n"
            "0,2,65535,a,b,0,0,2,8421376\r\n17\r\n");
}

TEST(Plt, PointLines) {
  std::string body;
  const DateSeconds time = DateOfUnix(1793882096);  // 5 November 2026, 12:34:56
  AppendPltPoint(body, {"55.123456", "37.123456", 0, "40.35", time});
  AppendPltPoint(body, {"55.2", "37.2", 1, "0.5", time + 11 * 3600 + 25 * 60 + 4});
  EXPECT_EQ(body,
            "55.123456,37.123456,0,-40.35,,05-Nov-26,12:34:56\r\n"
            "55.2,37.2,1,-0.5,,06-Nov-26,00:00:00\r\n");
}

TEST(Plt, ShortFeetIsCutNotRounded) {
  for (const auto& [feet, text] : {std::pair(40.35933F, "40.35"),
                                   {123.4567F, "123.4"},
                                   {1234.567F, "1234."},
                                   {0.5F, "0.5"},
                                   {12, "12"},
                                   {-1.2345F, "-1.23"}}) {
    EXPECT_EQ(ShortFeet(feet), text);
  }
}

}  // namespace
}  // namespace sondrix
