#include "echo/points_3d.h"

#include "core/fix.h"
#include "echo/letters.h"
#include "fault_in.h"
#include "test_run.h"

#include <cstring>
#include <limits>

namespace sondrix {
namespace {

struct Entry {
  float depth, dist;  // feet
};

// A boat at 60 N 30 E that heads north, and the frame under it.
struct Boat : TestRun {
  Boat& Lists(const std::vector<Entry>& left, const std::vector<Entry>& right) {
    frame.LeftBytes = static_cast<std::int16_t>(left.empty() ? 0 : 8 * left.size() + 8);
    frame.RightBytes = static_cast<std::int16_t>(right.empty() ? 0 : 8 * right.size() + 8);
    payload.assign(0x4C + static_cast<std::size_t>(frame.LeftBytes + frame.RightBytes) + 8, 0);
    std::uint8_t* at = payload.data() + 0x4C + 4;
    if (!left.empty()) std::memcpy(at, left.data(), 8 * left.size());
    if (!right.empty()) std::memcpy(at + frame.LeftBytes, right.data(), 8 * right.size());
    return *this;
  }
  // The third column of each line, which tells the entries apart, with a blank behind it.
  std::string Depths() {
    Points();
    std::string depths;
    for (std::size_t at = 0; at < csv.size(); at = csv.find('\n', at) + 1) {
      const std::size_t first = csv.find(',', csv.find(',', at) + 1) + 1;
      depths += csv.substr(first, csv.find(',', first) - first) + " ";
    }
    return depths;
  }
  const std::string& Points() {
    csv.clear();
    frame.Payload = payload;
    Points3D(run, points, fix, frame, csv);
    return csv;
  }

  Fix fix{60, 30, 0, "2016-05-25T14:03:07", true, false, false};
  Points3DState points;
  std::vector<std::uint8_t> payload;
  Frame3D frame;
  std::string csv;
};

TEST(Points3D, PlacesBothSides) {
  Boat boat;
  boat.Lists({{10, 100}}, {{0, 100}}).limits.DepthAddM = -0.2F;
  EXPECT_EQ(boat.Points(),
            "59.999999999,29.999453764,2.85,2016-05-25T14:03:07\r\n"
            "59.999999999,30.000546237,0,2016-05-25T14:03:07\r\n");
  boat.settings.UseRev = boat.settings.UseUTM = true;
  const std::string utm = boat.Points();  // the easting comes first; the boat's line parts two zones
  EXPECT_EQ(utm.substr(0, 3) + utm.substr(utm.find('\n') + 1, 3), "332667");
}

TEST(Points3D, TurnsLeaveTheOutside) {
  const std::tuple<bool, bool, bool, std::string> rows[] = {{true, false, false, "3.05 6.1 "},
                                                            {false, true, true, "3.05 "},
                                                            {false, true, false, "6.1 "},
                                                            {true, true, true, "6.1 "},
                                                            {true, true, false, "3.05 "}};
  for (const auto& [reversed, exceeded, up, depths] : rows) {
    Boat boat;
    boat.Lists({{10, 50}}, {{20, 50}}).settings.UseRev = reversed;
    boat.fix.TurnExceeded = exceeded;
    boat.fix.TurnUp = up;
    EXPECT_EQ(boat.Depths(), depths) << reversed << exceeded << up;
  }
}

TEST(Points3D, SpacingAndWidth) {
  Boat boat;
  boat.Lists({{10, 0}, {20, 1}, {30, 2}, {40, 3}, {50, 4}, {60, 5}, {70, 7}, {80, 8}}, {});
  boat.limits.MinDistM = 1;
  EXPECT_EQ(boat.Depths(), "15.24 24.38 ");
  boat.limits = {.SidePercent = 80};
  boat.Lists({{10, 80}, {20, 81}, {30, 100}}, {{40, 8}, {50, 9}, {60, 10}});
  EXPECT_EQ(boat.Depths(), "3.05 12.19 ");
  // An entry beyond the width moves the mark of the spacing all the same.
  boat.limits = {.MinDistM = 3, .SideLimitM = 5};
  EXPECT_EQ(boat.Lists({{10, 20}, {20, 16}, {30, 12}}, {}).Depths(), "");
}

TEST(Points3D, SavedPicturesShortenLists) {
  Boat boat;
  std::vector<Entry> left(99, {0, 20});
  left[58].depth = 30;
  left[59].depth = 40;
  boat.Lists(left, {{20, 20}});
  std::string shallow;
  for (int i = 0; i < 58; ++i) shallow += "0 ";
  EXPECT_EQ(boat.Depths(), shallow + "9.14 12.19 " + shallow.substr(0, 2 * 39) + "6.1 ");
  boat.settings.SaveGraf = true;
  EXPECT_EQ(boat.Depths(), shallow + "9.14 6.1 ");
}

TEST(Points3D, DrawsWhatItWalks) {
  Boat boat;
  boat.settings.MakeGraf = true;
  PrepareViews(boat.pictures, 9, 500);
  boat.Lists({{0, 1}, {30, 2}, {100, 3}}, {{0, 1}}).Points();
  std::string lines;
  for (const PendingLine& line : boat.pictures.Curve.Lines) {
    for (const float at : {line.x1, line.y1, line.x2, line.y2}) lines += std::to_string(int(at)) + " ";
    lines += LetterOf(line.colour);
  }
  // An empty depth repeats the one before, from side to side.
  EXPECT_EQ(lines,
            "256 128 256 127 B256 127 128 126 B128 126 4 125 B4 124 256 128 R"
            "256 128 4 129 B4 130 256 128 R");
  EXPECT_EQ(Runs(boat.pictures.ECHO, 226), "205. 1? 2? 2. 2? 208.");
  boat.Lists({}, {}).Points();
  EXPECT_EQ(Runs(boat.pictures.ECHO, 226), "420.");
}

TEST(Points3D, HostileLists) {
  EXPECT_TRUE(EntriesOf(11) == 0 && EntriesOf(12) == 1 && EntriesOf(20) == 1 && EntriesOf(-32768) == 0);
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const std::tuple<std::int16_t, std::int16_t, std::int16_t, Entry, int> rows[] = {
      {16, 17000, 0, {10, 10}, 9},  {32767, 16, 0, {10, 10}, 9}, {-32768, 0, 0, {10, 10}, 0},
      {-32768, 16, 0, {10, 10}, 9}, {-80, 16, 0, {0, 0}, 0},     {-84, 16, 0, {0, 0}, 9},
      {16, 32767, 50, {10, 10}, 9}, {16, 0, 0, {10, 255.5F}, 6}, {16, 0, 0, {10, 255.4F}, 0},
      {16, 0, 0, {-0.13F, 10}, 6},  {16, 0, 0, {nan, 10}, 6},    {16, 0, 50, {10, nan}, 6},
      {0, 0, 50, {nan, nan}, 0},
  };
  for (const auto& [left, right, percent, entry, fault] : rows) {
    Boat boat;
    boat.settings.MakeGraf = true;
    PrepareViews(boat.pictures, 9, 500);
    boat.Lists({entry}, {entry}).limits.SidePercent = percent;
    boat.frame.LeftBytes = left;
    boat.frame.RightBytes = right;
    EXPECT_EQ(FaultIn([&] { boat.Points(); }), fault) << left << " " << right << " " << percent;
  }
}

}  // namespace
}  // namespace sondrix
