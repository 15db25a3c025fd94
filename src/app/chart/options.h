#pragma once

#include "chart/contours.h"
#include "chart/depth_model.h"
#include "exports/export_formats.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

struct ChartOutput {
  std::string path;
  ExportKind kind = ExportKind::Csv;
  std::string driver = {};  // of Contours: what GDAL makes them with, found out once GDAL is loaded
};

// How the depth model and the contours are to be made.
struct ModelChoice {
  ModelMethod method = ModelMethod::Chosen;
  std::optional<double> tension;      // 0 to 1
  std::string shore;                  // a vector file; empty: none
  std::optional<double> cell, reach;  // metres
  ContourDepths contours;             // metres
  bool isInFeet = false;              // the contours' steps and depths, also in files

  double MetresOfUnit() const { return isInFeet ? 0.3048 : 1; }
  // Of metres; a whole number of millionths, so that 5 feet are 5.
  double InUnit(double metres) const { return isInFeet ? std::round(metres / 0.3048 * 1e6) / 1e6 : metres; }
  std::string_view UnitName() const { return isInFeet ? "ft" : "m"; }
};

struct ChartOptions {
  std::vector<ChartOutput> outputs;         // in the order given
  std::vector<std::string> columns;         // of a table; empty: found out
  std::string sourceCrs;                    // EPSG:n; empty: degrees
  std::optional<bool> isFeet;               // depths of a table
  bool isZUp = false;                       // depths of a table are heights
  std::string zone;                         // of times without one; empty: UTC
  std::optional<std::uint8_t> channel;      // of recordings; none: the one whose frames carry depths
  double offsetRight = 0, offsetAhead = 0;  // transducer from the antenna, metres
  double draft = 0;                         // added to every depth, metres
  bool cleans = true;
  std::string crs;  // EPSG:n; empty: the UTM zone of the soundings
  ModelChoice model;
  std::string report;  // empty: none
  int threads = 0;     // 0: as many as the machine has cores
  bool verbose = false;
  std::vector<std::string> sources;
};

// Either options to go on with, or a text and the status to leave with: 0 for the texts that were asked for,
// 2 for wrong usage.
struct ParsedChartOptions {
  ChartOptions options;
  std::optional<int> exitStatus;
  std::string text;
};

// What is wrong with an output of an ending that nothing is made for.
std::string OutputRefusal(const std::string& path);

// The name of a method as the option has it.
std::string_view NameOf(ModelMethod method);

// From the arguments behind the program's name. What isn't made yet is known by name and refused.
ParsedChartOptions ParseChartOptions(std::span<const std::string> arguments);

}  // namespace sondrix
