#include "formats/wpt.h"

#include "core/number_text.h"

namespace sondrix {

const WaypointKind ReliefWaypoint = {70, 65535, 0, ",41569.5000000, 70, 0, 3,         0,     65535,#",
                                     ", 0, 0,    0,     -0, 6, 0,17,0,10.0,2,,,,240"};
const WaypointKind FishWaypoint = {23, 16776960, 2, ",41569.5000000, 23, 0, 3,         0,  16776960,#",
                                   ", 2, 0,    0,     -0, 6, 0,17,0,10.0,2,,,,240"};

std::string_view WptHead() {
  return "OziExplorer Waypoint File Version 1.1\r\nWGS 84\r\nReserved 2\r\ngarmin\r\n";
}

void AppendWaypoint(std::string& text, const WaypointKind& kind, const Waypoint& waypoint) {
  AppendWhole(text, waypoint.number);
  text.append(",").append(waypoint.name);
  text.append(",  ").append(waypoint.latitude);
  text.append(",  ").append(waypoint.longitude);
  text.append(kind.middle);
  AppendWhole(text, waypoint.frameIndex);
  text.append(" ").append(waypoint.speed).append(kind.closing).append("\r\n");
}

}  // namespace sondrix
