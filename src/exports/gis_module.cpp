#include "chart/projection.h"
#include "exports/geopackage.h"
#include "exports/gis.h"

extern "C" const sondrix::Gis* SondrixGis() {
  static constexpr sondrix::Gis gis = {SONDRIX_VERSION, sondrix::ToPlane, sondrix::ToDegrees,
                                       sondrix::WriteGeopackage};
  return &gis;
}
