#include "formats/plt.h"

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
    EXPECT_EQ(ShortFeet(feet), text);
  }
}

}  // namespace
}  // namespace sondrix
