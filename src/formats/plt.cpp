#include "formats/plt.h"

#include "core/date_time.h"
#include "core/number_text.h"
#include "core/point.h"

namespace sondrix {

std::string PltHead(std::string_view trackName, std::int64_t pointCount) {
  std::string head =
      "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\nAltitude is in Feet\r\nReserved 3\r\n0,2,65535,";
  head.append(trackName).append(",0,0,2,8421376\r\n");
  AppendWhole(head, pointCount);
  head += "\r\n";
  return head;
}

void AppendPltPoint(std::string& body, const Point& point, std::size_t feetLength) {
  const std::string feet = LocText(point.Feet);
  body.append(point.LatText).append(",").append(point.LonText);
  body.append(point.Segment == 1 ? ",1,-" : ",0,-").append(feet, 0, feetLength).append(",,");
  AppendTrackDate(body, point.Time);
  body += ',';
  AppendClockTime(body, point.Time);
  body.append("\r\n");
}

}  // namespace sondrix
