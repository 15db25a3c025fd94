#include "exports/geopackage_file.h"

#include "core/files.h"

#include <chrono>
#include <condition_variable>
#include <gdal.h>
#include <mutex>
#include <stop_token>
#include <thread>

namespace sondrix {
namespace {

// While it lives, a statement of the data set fails when the run is to end: one of SQL takes seconds.
class SqlWatch {
 public:
  SqlWatch(GDALDatasetH dataset, const ExportRun& run)
      : thread_([this, dataset, &run](const std::stop_token& stop) {
          constexpr std::chrono::milliseconds pause(50);
          std::unique_lock lock(mutex_);
          while (!isStopped_.wait_for(lock, stop, pause, [&stop] { return stop.stop_requested(); })) {
            if (run.isToEnd && run.isToEnd()) GDALDatasetAbortSQL(dataset);
          }
        }) {}

 private:
  std::mutex mutex_;
  std::condition_variable_any isStopped_;
  std::jthread thread_;
};

}  // namespace

GeopackageFile::GeopackageFile(const std::string& path, double date)
    : journal_("OGR_SQLITE_JOURNAL", "OFF"),
      synchronous_("OGR_SQLITE_SYNCHRONOUS", "OFF"),
      date_("OGR_CURRENT_DATE", (StampOf(date) + ".000Z").c_str()) {
  GDALAllRegister();
  const GDALDriverH driver = GDALGetDriverByName("GPKG");
  if (driver == nullptr) throw CantExport("this GDAL has no GeoPackage");
  dataset_.reset(GDALCreate(driver, path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
  if (!dataset_ || GDALDatasetStartTransaction(dataset_.get(), 0) != OGRERR_NONE) messages_.Throw();
}

OGRLayerH GeopackageFile::AddLayer(const char* name, OGRwkbGeometryType geometry, const std::string& crs,
                                   std::span<const LayerColumn> columns) {
  return Add(name, geometry, ReferenceOf(crs, messages_).get(), columns);
}

OGRLayerH GeopackageFile::AddTable(const char* name, std::span<const LayerColumn> columns) {
  return Add(name, wkbNone, nullptr, columns);
}

// Its index of places is made by Close alone: GDAL would make it of a file that is given up too, which
// takes longer than the features.
OGRLayerH GeopackageFile::Add(const char* name, OGRwkbGeometryType geometry, OGRSpatialReferenceH reference,
                              std::span<const LayerColumn> columns) {
  const char* const options[] = {geometry == wkbNone ? "FID=id" : "SPATIAL_INDEX=NO", nullptr};
  const OGRLayerH layer = GDALDatasetCreateLayer(dataset_.get(), name, reference, geometry, options);
  if (layer == nullptr) messages_.Throw();
  for (const LayerColumn& column : columns) {
    const OGRFieldDefnH field = OGR_Fld_Create(column.name, column.type);
    OGR_Fld_SetSubType(field, column.subtype);
    const OGRErr error = OGR_L_CreateField(layer, field, 1);
    OGR_Fld_Destroy(field);
    if (error != OGRERR_NONE) messages_.Throw();
  }
  return layer;
}

void GeopackageFile::Add(OGRLayerH layer, const Feature& feature) const {
  OGR_F_SetFID(feature.get(), OGRNullFID);
  if (OGR_L_CreateFeature(layer, feature.get()) != OGRERR_NONE) messages_.Throw();
}

void GeopackageFile::Run(const std::string& sql) const {
  const OGRLayerH result = GDALDatasetExecuteSQL(dataset_.get(), sql.c_str(), nullptr, nullptr);
  if (result != nullptr) GDALDatasetReleaseResultSet(dataset_.get(), result);
  messages_.ThrowIfFailed();
}

void GeopackageFile::Close(const ExportRun& run) {
  for (int i = 0; i < GDALDatasetGetLayerCount(dataset_.get()); ++i) {
    const OGRLayerH layer = GDALDatasetGetLayer(dataset_.get(), i);
    if (OGR_L_GetGeomType(layer) == wkbNone) continue;
    const std::string sql = std::string("SELECT CreateSpatialIndex('") + OGR_L_GetName(layer) + "', '" +
                            OGR_L_GetGeometryColumn(layer) + "')";
    // cppcheck-suppress unreadVariable ; it works as long as it lives
    const SqlWatch watch(dataset_.get(), run);
    try {
      Run(sql);
    } catch (const CantExport&) {
      run.EndIfAsked();
      throw;
    }
  }
  run.EndIfAsked();
  if (GDALDatasetCommitTransaction(dataset_.get()) != OGRERR_NONE) messages_.Throw();
  dataset_.reset();
  messages_.ThrowIfFailed();
}

}  // namespace sondrix
