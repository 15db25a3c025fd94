#include "exports/contour_files.h"

#include "core/files.h"
#include "core/text.h"
#include "exports/gdal_handles.h"
#include "exports/made_file.h"

#include <algorithm>
#include <cpl_string.h>
#include <gdal.h>
#include <iterator>
#include <ogr_api.h>
#include <optional>
#include <string_view>

namespace sondrix {
namespace {

// What they make keeps no line with its depth, needs a model of its own, is a folder, or tells the hour.
constexpr std::string_view UnfitDrivers[] = {"BAG",    "DGN",    "Interlis 1", "Interlis 2",  "MVT",
                                             "netCDF", "PCIDSK", "ODS",        "OpenFileGDB", "PDF",
                                             "PDS4",   "S57",    "VDV",        "WAsP",        "XLSX"};

bool HasCapability(GDALDriverH driver, const char* name) {
  const char* const value = GDALGetMetadataItem(driver, name, nullptr);
  return value != nullptr && EQUAL(value, "YES");
}

bool Knows(GDALDriverH driver, std::string_view path) {
  const char* const endings = GDALGetMetadataItem(driver, GDAL_DMD_EXTENSIONS, nullptr);
  if (endings == nullptr) return false;
  std::string_view rest = endings;
  while (!rest.empty()) {
    const std::size_t blank = std::min(rest.find(' '), rest.size());
    const std::string ending = "." + std::string(rest.substr(0, blank));
    if (path.size() > ending.size() && std::equal(ending.rbegin(), ending.rend(), path.rbegin(),
                                                  [](char a, char b) { return a == Lower(b); }))
      return true;
    rest.remove_prefix(std::min(blank + 1, rest.size()));
  }
  return false;
}

// Adds the field, if the kind of file takes it.
bool AddField(OGRLayerH layer, const char* name, OGRFieldType type, OGRFieldSubType subtype) {
  if (OGR_L_TestCapability(layer, OLCCreateField) == 0) return false;
  const OGRFieldDefnH field = OGR_Fld_Create(name, type);
  OGR_Fld_SetSubType(field, subtype);
  if (type == OFTReal) {
    // A table of fixed width has room for a depth to the millimetre.
    OGR_Fld_SetWidth(field, 12);
    OGR_Fld_SetPrecision(field, 3);
  }
  const OGRErr error = OGR_L_CreateField(layer, field, TRUE);
  OGR_Fld_Destroy(field);
  return error == OGRERR_NONE;
}

class ContourLayer {
 public:
  ContourLayer(GDALDatasetH file, const char* name, const ChartData& chart, GdalMessages& messages)
      : messages_(messages) {
    // The day of the table's head; other kinds pass it over.
    const std::string date = "DBF_DATE_LAST_UPDATE=" + StampOf(chart.date).substr(0, 10);
    const bool isTable = EQUAL(GDALGetDriverShortName(GDALGetDatasetDriver(file)), "ESRI Shapefile");
    const char* const options[] = {isTable ? date.c_str() : nullptr, isTable ? "ENCODING=UTF-8" : nullptr,
                                   nullptr};
    const Reference reference = ReferenceOf(chart.crs, messages);
    layer_ = GDALDatasetCreateLayer(file, name, reference.get(), wkbLineString, options);
    if (layer_ == nullptr) messages.Throw();
    hasFields_ =
        AddField(layer_, "depth", OFTReal, OFSTNone) && AddField(layer_, "index", OFTInteger, OFSTBoolean);
    messages.Forget();
  }

  void Add(const ContourLine& line) {
    const Feature feature(OGR_F_Create(OGR_L_GetLayerDefn(layer_)));
    if (hasFields_) {
      OGR_F_SetFieldDouble(feature.get(), OGR_F_GetFieldIndex(feature.get(), "depth"), line.depth);
      OGR_F_SetFieldInteger(feature.get(), OGR_F_GetFieldIndex(feature.get(), "index"), line.isIndex ? 1 : 0);
    }
    const OGRGeometryH geometry = OGR_G_CreateGeometry(wkbLineString);
    const int count = static_cast<int>(line.points.size());
    OGR_G_SetPointCount(geometry, count);
    for (int i = 0; i < count; ++i) {
      const PlanePoint& point = line.points[static_cast<std::size_t>(i)];
      if (hasFields_) {
        OGR_G_SetPoint_2D(geometry, i, point.x, point.y);
      } else {
        OGR_G_SetPoint(geometry, i, point.x, point.y, -line.depth);
      }
    }
    OGR_F_SetGeometryDirectly(feature.get(), geometry);
    if (OGR_L_CreateFeature(layer_, feature.get()) != OGRERR_NONE) messages_.Throw();
  }

 private:
  GdalMessages& messages_;
  OGRLayerH layer_ = nullptr;
  bool hasFields_ = false;
};

void MakeContours(const ChartData& chart, const ExportRun& run, const std::string& driver,
                  const std::string& path) {
  GdalMessages messages;
  GDALAllRegister();
  const GDALDriverH maker = GDALGetDriverByName(driver.c_str());
  if (maker == nullptr) throw CantExport("this GDAL has no driver " + driver);
  Dataset file(GDALCreate(maker, path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
  if (!file) messages.Throw();
  const std::string_view name = FileNameOf(path);
  {
    ContourLayer layer(file.get(), std::string(name.substr(0, name.rfind('.'))).c_str(), chart, messages);
    std::size_t points = 0;
    for (const ContourLine& line : chart.contours->lines) {
      layer.Add(line);
      constexpr std::size_t pointsBetween = 10000;
      points += line.points.size();
      if (points < pointsBetween) continue;
      run.EndIfAsked();
      points = 0;
    }
  }
  run.EndIfAsked();
  file.reset();
  messages.ThrowIfFailed();
  if (!IdOf(path)) throw CantExport("the driver " + driver + " makes no file of that name");
}

}  // namespace

std::string VectorDriverOf(const std::string& path) {
  GDALAllRegister();
  for (int i = 0; i < GDALGetDriverCount(); ++i) {
    const GDALDriverH driver = GDALGetDriver(i);
    if (std::find(std::begin(UnfitDrivers), std::end(UnfitDrivers), GDALGetDriverShortName(driver)) !=
        std::end(UnfitDrivers))
      continue;
    if (HasCapability(driver, GDAL_DCAP_VECTOR) && HasCapability(driver, GDAL_DCAP_CREATE) &&
        HasCapability(driver, GDAL_DCAP_VIRTUALIO) && Knows(driver, path))
      return GDALGetDriverShortName(driver);
  }
  return {};
}

void WriteContours(const ChartData& chart, const ExportRun& run, const std::string& driver,
                   const std::string& path) {
  MakeFile(path, [&] { MakeContours(chart, run, driver, path); });
}

}  // namespace sondrix
