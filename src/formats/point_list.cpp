#include "formats/point_list.h"

#include "core/number_text.h"
#include "core/point.h"

namespace sondrix {

void AppendDepthRow(std::string& body, const Point& point) {
  body.append(point.LatText)
      .append(",")
      .append(point.LonText)
      .append(",")
      .append(point.DepthText)
      .append("\r\n");
}

void AppendHeightRow(std::string& body, const Point& point) {
  body.append(point.LonText).append(",").append(point.LatText).append(",-").append(point.DepthText);
  body.append("\r\n");
}

void AppendBadLine(std::string& body, const BadLine& bad) {
  body.append(bad.reason).append(bad.value).append(bad.inLine);
  AppendWhole(body, bad.line);
  body.append("\r\n");
}

}  // namespace sondrix
