#include "chart_call.h"
#include "temporary_folder.h"

#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

// Lines to the north and back, 10 m apart, over a slope from 1 to 10 m; some 5 m between soundings.
std::string SlopeText(double longitude, double latitude, int lines = 8, int perLine = 20) {
  std::ostringstream text;
  text.precision(12);
  text << "latitude,longitude,depth\n";
  for (int line = 0; line < lines; ++line) {
    for (int i = 0; i < perLine; ++i) {
      const int along = line % 2 == 0 ? i : perLine - 1 - i;
      double east = longitude + line * 10 / (111'320 * std::cos(latitude * 0.01745));
      if (east >= 180) east -= 360;
      text << latitude + along * 5 / 111'320.0 << ',' << east << ',' << 1 + 9.0 * along / perLine << '\n';
    }
  }
  return text.str();
}

std::string AreaText(double west, double south, double size) {
  std::ostringstream text;
  text << R"({"type":"FeatureCollection","features":[{"type":"Feature","properties":{},"geometry":)"
       << R"({"type":"Polygon","coordinates":[[)";
  for (const auto& [x, y] : {std::pair(0, 0), {1, 0}, {1, 1}, {0, 1}, {0, 0}}) {
    text << (x + y == 0 && text.str().back() != '[' ? ",["
             : x + y == 0                           ? "["
                                                    : ",[")
         << west + x * size << "," << south + y * size << "]";
  }
  text << "]]}}]}";
  return text.str();
}

class ChartSteps : public testing::Test {
 protected:
  ChartSteps() {
    fs::current_path(folder_.Path(""));
    folder_.Write("lake.csv", SlopeText(37.2, 55.5));
  }
  ~ChartSteps() override { fs::current_path(before_); }

  fs::path before_ = fs::current_path();
  TemporaryFolder folder_;
};

TEST_F(ChartSteps, OddSoundingsGiveAChartOrALine) {
  const std::string head = "latitude,longitude,depth\n";
  const struct {
    std::string table, crs;
  } cases[] = {
      {head + "55.5,37.2,4\n", "32637"},
      {head + "55.5,37.2,4\n55.5001,37.2,5\n", "32637"},
      {SlopeText(37.2, 55.5, 1, 50), "32637"},
      {head + "55.5,37.2,4\n55.5,37.2,4.1\n55.5,37.2,4.2\n", "32637"},
      {SlopeText(35.9992, 55.5), "32636"},
      {SlopeText(179.9996, -17), "32760"},
      {SlopeText(10, 85), "32661"},
      {SlopeText(-10, -80.5), "32761"},
  };
  for (const auto& [table, crs] : cases) {
    folder_.Write("odd.csv", table);
    const Called called = Call("-o x.tif -o x.geojson -o x.shp -o x.gpkg odd.csv --report r.json");
    EXPECT_EQ(called.status, 0) << crs << called.out << called.err;
    EXPECT_NE(called.out.find("grid in EPSG:" + crs + ": "), std::string::npos) << called.out;
    const auto chart = nlohmann::json::parse(folder_.Read("r.json"))["chart"];
    EXPECT_GT(chart["grid"]["cells"], 0);
    EXPECT_GE(chart["grid"]["reach"], 5 * chart["grid"]["cell"].get<double>() * 0.999);
  }
}

TEST_F(ChartSteps, WhatLiesFarStaysOutOfTheChartAlone) {
  folder_.Write("far.csv", SlopeText(44, 52, 2));
  folder_.Write("part.csv", SlopeText(37.2005, 55.5005, 4) + "10,10,5\n");
  ASSERT_EQ(Call("-o near.tif lake.csv").status, 0);
  const Called called = Call("-o x.tif -o x.csv -o x.xyz --report r.json far.csv lake.csv part.csv");
  EXPECT_EQ(called.status, 0) << called.err;
  EXPECT_NE(called.out.find(
                "all 40 soundings of far.csv lie some 590 km from the others: they aren't in the chart\n"),
            std::string::npos)
      << called.out;
  const auto chart = nlohmann::json::parse(folder_.Read("r.json"))["chart"];
  ASSERT_EQ(chart["far"].size(), 2u);
  EXPECT_EQ(chart["far"][0]["soundings"], 40);
  EXPECT_LT(chart["grid"]["columns"].get<double>() * chart["grid"]["cell"].get<double>(), 2000);
  EXPECT_NE(folder_.Read("x.csv").find(",far.csv,"), std::string::npos);
  EXPECT_EQ(folder_.Read("x.xyz").find("nan"), std::string::npos);
  // Without an output it is told as well.
  EXPECT_NE(Call("far.csv lake.csv").out.find("all 40 soundings of far.csv"), std::string::npos);
}

TEST_F(ChartSteps, WhatKeepsAChartFromBeingMade) {
  folder_.Write("water.geojson", AreaText(37.1995, 55.4995, 0.003));
  folder_.Write("elsewhere.geojson", AreaText(10, 50, 0.05));
  folder_.Write("none.geojson", R"({"type":"FeatureCollection","features":[]})");
  folder_.Write("words.shp", "a shore");
  folder_.Write("blind.csv", "latitude,longitude,depth\n55.5,37.2,0\n55.5,37.2001,0\n");
  const struct {
    std::string line, words;
  } cases[] = {
      {"--shore missing.shp lake.csv", "--shore missing.shp: "},
      {"--shore words.shp lake.csv", "--shore words.shp: "},
      {"--shore none.geojson lake.csv", "--shore none.geojson: "},
      {"--shore elsewhere.geojson lake.csv", "--shore elsewhere.geojson: "},
      {"--cell 0.001 lake.csv", "--cell "},
      {"--crs EPSG:2154 --cell 0.01 lake.csv", "--cell "},
      {"blind.csv", "no sounding is used"},
  };
  for (const auto& [line, words] : cases) {
    folder_.Write("x.tif", "earlier");
    folder_.Write("x.dbf", "earlier");
    const Called called = Call("-o x.tif -o x.shp -o x.csv " + line);
    EXPECT_EQ(called.status, 1) << line;
    EXPECT_EQ(called.err.find("sondrix-chart: x.tif: not made: "), 0u) << line << "\n" << called.err;
    EXPECT_NE(called.err.find(words), std::string::npos) << line << "\n" << called.err;
    EXPECT_EQ(called.err.find('\n', called.err.find('\n') + 1), called.err.size() - 1) << called.err;
    EXPECT_EQ(folder_.Read("x.tif") + folder_.Read("x.dbf"), "earlierearlier");
    EXPECT_NE(called.out.find("\nx.csv: "), std::string::npos) << line;
    EXPECT_FALSE(fs::exists("x.shp") || fs::exists("x.tif.part") || fs::exists("x.shp.part"));
  }
  EXPECT_EQ(Call("--shore water.geojson -o x.tif lake.csv").status, 0);
  // A GeoPackage has soundings all the same, where there is nothing to make a chart of.
  const Called blind = Call("-o x.gpkg blind.csv");
  EXPECT_NE(blind.out.find(", without contours: no sounding is used\n"), std::string::npos)
      << blind.out << blind.err;
}

TEST_F(ChartSteps, DepthsOfContours) {
  const struct {
    std::string options;
    std::vector<double> depths;
  } cases[] = {
      {"--contours 4", {4, 8}},
      {"--contours 1.5,3,4", {1.5, 3, 4}},
      {"--contours 10 --units ft", {10, 20, 30}},
      {"--contours 5,12 --units ft", {5, 12}},
  };
  for (const auto& [options, depths] : cases) {
    ASSERT_EQ(Call("-o x.geojson --report r.json lake.csv " + options).status, 0) << options;
    const auto report = nlohmann::json::parse(folder_.Read("r.json"));
    EXPECT_EQ(report["chart"]["contours"]["depths"].get<std::vector<double>>(), depths) << options;
    std::set<double> drawn;
    const auto made = nlohmann::json::parse(folder_.Read("x.geojson"));
    for (const auto& feature : made["features"]) drawn.insert(feature["properties"]["depth"].get<double>());
    EXPECT_EQ(std::vector<double>(drawn.begin(), drawn.end()), depths) << options;
  }
}

}  // namespace
}  // namespace sondrix
