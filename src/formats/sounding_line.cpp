#include "formats/sounding_line.h"

#include "core/number_text.h"

namespace sondrix {

void AppendSoundingLine(std::string& csv, double first, double second, std::string_view depth,
                        std::string_view stamp) {
  AppendNumText(csv, first);
  csv += ',';
  AppendNumText(csv, second);
  csv.append(depth.starts_with('.') ? ",0" : ",").append(depth);
  csv.append(1, ',').append(stamp).append("\r\n");
}

}  // namespace sondrix
