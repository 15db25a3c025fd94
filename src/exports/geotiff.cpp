#include "exports/geotiff.h"

#include "core/files.h"
#include "exports/gdal_handles.h"
#include "exports/made_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cpl_conv.h>
#include <cpl_string.h>
#include <gdal.h>
#include <limits>
#include <vector>

namespace sondrix {
namespace {

// A band that lies in memory of ours, which GDAL only reads.
void AddBand(GDALDatasetH raster, const std::vector<float>& values, const char* name,
             const GdalMessages& messages) {
  std::array<char, 64> address{};
  CPLPrintPointer(address.data(), const_cast<float*>(values.data()), static_cast<int>(address.size()) - 1);
  const std::string pointer = std::string("DATAPOINTER=") + address.data();
  const char* options[] = {pointer.c_str(), nullptr};
  if (GDALAddBand(raster, GDT_Float32, const_cast<char**>(options)) != CE_None) messages.Throw();
  const GDALRasterBandH band = GDALGetRasterBand(raster, GDALGetRasterCount(raster));
  GDALSetDescription(band, name);
  GDALSetRasterUnitType(band, "m");
  GDALSetRasterNoDataValue(band, std::numeric_limits<double>::quiet_NaN());
}

// Each is half as long as the one before, and the last one fits a small window.
int OverviewsOf(const GridShape& shape) {
  constexpr int window = 256;
  const int longest = std::max(shape.columns, shape.rows);
  int count = longest > 1 ? 1 : 0;
  for (int length = longest / 2; length > window; length /= 2) ++count;
  return count;
}

std::vector<float> HeightsOf(const std::vector<float>& depths) {
  std::vector<float> heights(depths);
  for (float& height : heights) height = 0 - height;
  return heights;
}

void MakeGeotiff(const ChartData& chart, const ExportRun& run, const std::string& path) {
  GdalMessages messages;
  // Tiles of ours pass through it once.
  constexpr GIntBig cacheBytes = 32 << 20;
  GDALSetCacheMax64(cacheBytes);
  GDALAllRegister();
  const GDALDriverH memory = GDALGetDriverByName("MEM"), cog = GDALGetDriverByName("COG");
  if (memory == nullptr || cog == nullptr) throw CantExport("this GDAL has no cloud optimized GeoTIFF");

  const GridShape& shape = chart.model->shape;
  const Dataset raster(GDALCreate(memory, "", shape.columns, shape.rows, 0, GDT_Float32, nullptr));
  if (!raster) messages.Throw();
  std::array<double, 6> corner = {shape.west, shape.cell, 0, shape.north, 0, -shape.cell};
  GDALSetGeoTransform(raster.get(), corner.data());
  GDALSetSpatialRef(raster.get(), ReferenceOf(chart.crs, messages).get());
  std::string stamp = StampOf(chart.date);  // as TIFF has it: "2021:05:15 07:29:02"
  stamp[4] = stamp[7] = ':';
  stamp[10] = ' ';
  GDALSetMetadataItem(raster.get(), "TIFFTAG_DATETIME", stamp.c_str(), nullptr);
  const std::vector<float> heights = chart.isZUp ? HeightsOf(chart.model->depth) : std::vector<float>();
  if (chart.isZUp) {
    AddBand(raster.get(), heights, "height", messages);
  } else {
    AddBand(raster.get(), chart.model->depth, "depth", messages);
  }
  AddBand(raster.get(), chart.model->uncertainty, "uncertainty", messages);

  // Any reader of the last twenty years knows DEFLATE; the levels above the first hardly gain on floats.
  const std::string threads = "NUM_THREADS=" + std::to_string(run.threads);
  const std::string overviews = "OVERVIEW_COUNT=" + std::to_string(OverviewsOf(shape));
  const char* options[] = {overviews.c_str(),
                           "COMPRESS=DEFLATE",
                           "LEVEL=1",
                           "PREDICTOR=FLOATING_POINT",
                           "OVERVIEW_RESAMPLING=AVERAGE",
                           threads.c_str(),
                           nullptr};
  ExportRun asked = run;
  Dataset file(
      GDALCreateCopy(cog, path.c_str(), raster.get(), FALSE, const_cast<char**>(options), GoOn, &asked));
  run.EndIfAsked();
  if (!file) messages.Throw();
  file.reset();
  messages.ThrowIfFailed();
}

}  // namespace

void WriteGeotiff(const ChartData& chart, const ExportRun& run, const std::string& path) {
  MakeFile(path, [&] { MakeGeotiff(chart, run, path); });
}

}  // namespace sondrix
