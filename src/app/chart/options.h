#pragma once

#include "exports/export_formats.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace sondrix {

struct ChartOutput {
  std::string path;
  ExportKind kind = ExportKind::Csv;
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
  std::string crs;     // EPSG:n; empty: the UTM zone of the soundings
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

// From the arguments behind the program's name. Options and outputs of the depth model, which isn't made yet,
// are known by name and refused.
ParsedChartOptions ParseChartOptions(std::span<const std::string> arguments);

}  // namespace sondrix
