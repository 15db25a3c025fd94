#include "formats/plt.h"

#include "core/number_text.h"

namespace sondrix {
namespace {

constexpr std::size_t ShortFeetLength = 5;

}  // namespace

std::string PltHead(std::string_view trackName, std::int64_t pointCount) {
  std::string head =
      "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\nAltitude is in Feet\r\nReserved 3\r\n0,2,65535,";
  head.append(trackName).append(",0,0,2,8421376\r\n");
  AppendWhole(head, pointCount);
  head += "\r\n";
  return head;
}

void AppendPltPoint(std::string& body, const PltPoint& point) {
  body.append(point.latitude).append(",").append(point.longitude);
  body.append(point.segmentCode == 1 ? ",1,-" : ",0,-").append(point.feet).append(",,");
  AppendTrackDate(body, point.time);
  body += ',';
  AppendClockTime(body, point.time);
  body.append("\r\n");
}

std::string ShortFeet(float feet) {
  std::string text = LocText(feet);
  if (text.size() > ShortFeetLength) text.resize(ShortFeetLength);
  return text;
}

}  // namespace sondrix
