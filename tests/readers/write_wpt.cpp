#include "formats/wpt.h"

#include <cstdio>
#include <string>

// Prints a waypoint file with a mark of each kind, as a run over the demonstration's lake leaves it.
int main() {
  using namespace sondrix;
  std::string text(WptHead());
  AppendWaypoint(text, ReliefWaypoint, {0, "5.03", "56.000090123", "37.000024123", 1200, "5.4 km/h "});
  AppendWaypoint(text, FishWaypoint, {0, "12.4", "-56.000123456", "-37.1", 1300, ""});
  text += "\r\n";
  return std::fputs(text.c_str(), stdout) < 0 ? 1 : 0;
}
