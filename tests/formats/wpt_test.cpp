#include "formats/wpt.h"

#include <gtest/gtest.h>
#include <tuple>

namespace sondrix {
namespace {

// The numbers of a kind, for the map program, stand in its line too.
TEST(Wpt, ALineOfEachKind) {
  const std::tuple<const WaypointKind&, int, int, int, const char*> rows[] = {
      {ReliefWaypoint, 70, 65535, 0,
       "-1,3.2,  .5,  -37,41569.5000000, 70, 0, 3,         0,     65535,#1200 4.8 km/h, 0, 0,    0,     -0, "
       "6, 0,17,0,10.0,2,,,,240\r\n"},
      {FishWaypoint, 23, 16776960, 2,
       "-1,3.2,  .5,  -37,41569.5000000, 23, 0, 3,         0,  16776960,#1200 4.8 km/h, 2, 0,    0,     -0, "
       "6, 0,17,0,10.0,2,,,,240\r\n"}};
  for (const auto& [kind, symbol, colour, direction, line] : rows) {
    std::string text;
    AppendWaypoint(text, kind, {-1, "3.2", ".5", "-37", 1200, "4.8 km/h"});
    EXPECT_EQ(text, line);
    EXPECT_EQ(std::tuple(kind.symbol, kind.colour, kind.direction), std::tuple(symbol, colour, direction));
  }
}

}  // namespace
}  // namespace sondrix
