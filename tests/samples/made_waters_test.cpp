#include "samples/made_waters.h"

#include "samples/made_water_table.h"
#include "samples/utm_plane.h"
#include "temporary_folder.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace sondrix {
namespace {

struct Bed {
  std::size_t columns = 0, rows = 0;
  double west = 0, south = 0, cell = 0, nodata = 0;
  std::vector<double> depths;

  explicit Bed(const std::string& path) {
    std::ifstream file(path);
    std::string word;
    file >> word >> columns >> word >> rows >> word >> west >> word >> south >> word >> cell >> word >>
        nodata;
    for (double depth = 0; file >> depth;) depths.push_back(depth);
  }
  // Of the cell that a place lies in.
  double At(double x, double y) const {
    const auto column = static_cast<std::size_t>((x - west) / cell);
    const auto row = rows - 1 - static_cast<std::size_t>((y - south) / cell);
    return depths.at(row * columns + column);
  }
};

// A grid that is turned or shifted, or a table in other places than the plane file, would make the comparison
// of programs on these waters worthless.
TEST(MadeWaters, SoundingsLieOnTheirBed) {
  const TemporaryFolder folder;
  for (const char* name : {"valley", "ponds", "bay"}) {
    SCOPED_TRACE(name);
    const MadeWater& water = *MadeWaterOf(name);
    ASSERT_TRUE(WriteMadeWater(water, folder.Path("waters"), 5));
    const std::string stem = folder.Path("waters/" + std::string(name));
    const Bed bed(stem + "-bed.asc");
    ASSERT_EQ(bed.depths.size(), bed.columns * bed.rows);
    EXPECT_NEAR(bed.cell, water.lineSpacing / 6, 0.06);

    std::ifstream plane(stem + ".xyz"), table(stem + ".csv");
    std::string row;
    std::getline(table, row);
    EXPECT_EQ(row, water.hasTimes ? "latitude,longitude,depth,time" : "latitude,longitude,depth");
    std::size_t count = 0;
    std::vector<double> away;
    for (double x = 0, y = 0, depth = 0; plane >> x >> y >> depth; ++count) {
      ASSERT_TRUE(std::getline(table, row));
      std::replace(row.begin(), row.end(), ',', ' ');
      std::istringstream cells(row);
      GlobePlace place;
      double told = 0;
      cells >> place.Lat >> place.Lon >> told;
      const PlanePlace at = UtmPlace(place, 37);
      ASSERT_NEAR(at.X, x, 0.002);
      ASSERT_NEAR(at.Y, y, 0.002);
      ASSERT_EQ(told, depth);
      away.push_back(std::abs(depth - bed.At(x, y)));
    }
    EXPECT_GE(count, 3000U);
    EXPECT_LE(count, 60'000U);
    EXPECT_FALSE(std::getline(table, row));
    // Half a cell away the bed is at most so much deeper or shallower, at half of the soundings.
    std::nth_element(away.begin(), away.begin() + static_cast<std::ptrdiff_t>(count / 2), away.end());
    EXPECT_LT(away[count / 2], 0.15);
  }
}

TEST(MadeWaters, ASeedIsAWater) {
  const TemporaryFolder folder;
  const MadeWater* ponds = MadeWaterOf("ponds");
  ASSERT_NE(ponds, nullptr);
  for (const auto& [name, seed] : {std::pair{"a", 1U}, {"b", 1U}, {"c", 2U}})
    ASSERT_TRUE(WriteMadeWater(*ponds, folder.Path(name), seed));
  for (const char* file : {"/ponds.csv", "/ponds.xyz", "/ponds-bed.asc"}) {
    EXPECT_EQ(folder.Read("a" + std::string(file)), folder.Read("b" + std::string(file)));
    EXPECT_NE(folder.Read("a" + std::string(file)), folder.Read("c" + std::string(file)));
  }
  EXPECT_EQ(MadeWaterOf("sea"), nullptr);
  EXPECT_FALSE(WriteMadeWater(*ponds, folder.Path("a/ponds.csv"), 1));
}

}  // namespace
}  // namespace sondrix
