#pragma once

#include "samples/utm_plane.h"

#include <string>
#include <vector>

// The lake that is charted: 2 km long, with islands, gentle and steep slopes, the channel of an old river,
// shoals and beds of weed. Its plane is that of UTM zone 37 north (EPSG:32637) less an origin: x metres to
// the east and y to the north of the lake's middle.

namespace sondrix {

inline constexpr int ChartLakeZone = 37;
inline constexpr double ChartLakeEasting = 412'000;
inline constexpr double ChartLakeNorthing = 6'240'000;

// Depth of the bed below level 0, metres; not a number on land. At the shore it is 0.
double ChartLakeDepth(double x, double y);

// Metres from the shore, measured from the middle of the lake or of the island; negative on land. The way
// across the shore may be as short as half of it.
double ChartLakeOffShore(double x, double y);

// Height of the weed above the bed, metres; 0 where none grows.
double ChartLakeWeed(double x, double y);

GlobePlace ChartLakeGlobe(double x, double y);
PlanePlace ChartLakePlane(const GlobePlace& place);

// The shore as closed rings, the first point not repeated: the lake's own counterclockwise, then the islands'
// clockwise. Their corners lie on the shore, at most about 10 m apart.
using ShoreRing = std::vector<PlanePlace>;
std::vector<ShoreRing> ChartLakeShore();

// A polygon with holes as GeoJSON.
std::string ChartLakeShoreJson();

// The bed as a text grid in the plane of the zone, -9999 on land, with cells of so many metres. The depths
// hold in the middle of the cells. False when it can't be written.
bool WriteChartLakeBed(const std::string& path, double cell);

}  // namespace sondrix
