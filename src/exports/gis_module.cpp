#include "chart/projection.h"
#include "exports/contour_files.h"
#include "exports/geopackage.h"
#include "exports/geotiff.h"
#include "exports/gis.h"
#include "exports/shore_file.h"

extern "C" const sondrix::Gis* SondrixGis() {
  static constexpr sondrix::Gis gis = {
      SONDRIX_VERSION,       sondrix::ToPlane,       sondrix::ToDegrees,      sondrix::WriteGeopackage,
      sondrix::WriteGeotiff, sondrix::WriteContours, sondrix::VectorDriverOf, sondrix::ReadShore,
  };
  return &gis;
}
