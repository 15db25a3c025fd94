#include "formats/point_list.h"

#include "core/number_text.h"

namespace sondrix {

void AppendDepthRow(std::string& body, std::string_view latitude, std::string_view longitude,
                    std::string_view depth) {
  body.append(latitude).append(",").append(longitude).append(",").append(depth).append("\r\n");
}

void AppendHeightRow(std::string& body, std::string_view latitude, std::string_view longitude,
                     std::string_view depth) {
  body.append(longitude).append(",").append(latitude).append(",-").append(depth).append("\r\n");
}

void AppendBadLine(std::string& body, const BadLine& bad) {
  body.append(bad.reason).append(bad.value).append(bad.inLine);
  AppendWhole(body, bad.line);
  body.append("\r\n");
}

}  // namespace sondrix
