#include "formats/plt.h"

#include "core/point.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(Plt, ShortFeetIsCutNotRounded) {
  for (const auto& [feet, text] : {std::pair(40.35933F, "40.35"),
                                   {123.4567F, "123.4"},
                                   {1234.567F, "1234."},
                                   {0.5F, "0.5"},
                                   {12, "12"},
                                   {-1.2345F, "-1.23"}}) {
    std::string line;
    AppendPltPoint(line, {.Feet = feet, .LatText = "1", .LonText = "2", .DepthText = "3"}, ShortFeet);
    EXPECT_EQ(line, std::string("1,2,0,-") + text + ",,30-Dec-99,00:00:00\r\n");
  }
}

}  // namespace
}  // namespace sondrix
