#pragma once

#include "exports/export_run.h"
#include "exports/gdal_handles.h"

#include <ogr_api.h>
#include <span>
#include <string>

namespace sondrix {

struct LayerColumn {
  const char* name;
  OGRFieldType type;
  OGRFieldSubType subtype = OFSTNone;
};

// A GeoPackage that grows in one transaction, at a path where nothing stands. A fault is CantExport with what
// GDAL says.
class GeopackageFile {
 public:
  // date: what the file says of its last change, seconds since 1970 UTC.
  GeopackageFile(const std::string& path, double date);

  OGRLayerH AddLayer(const char* name, OGRwkbGeometryType geometry, const std::string& crs,
                     std::span<const LayerColumn> columns);
  // One without places.
  OGRLayerH AddTable(const char* name, std::span<const LayerColumn> columns);
  // The feature gets a number of its own.
  void Add(OGRLayerH layer, const Feature& feature) const;
  // Makes the layers' indexes of places; then all is in the file. EndAsked.
  void Close(const ExportRun& run);

 private:
  OGRLayerH Add(const char* name, OGRwkbGeometryType geometry, OGRSpatialReferenceH reference,
                std::span<const LayerColumn> columns);
  void Run(const std::string& sql) const;

  GdalMessages messages_;
  // The file has no earlier state to go back to, and no name of its own before it is whole.
  GdalOption journal_, synchronous_, date_;
  Dataset dataset_;
};

}  // namespace sondrix
