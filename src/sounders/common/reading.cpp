#include "sounders/common/reading.h"

namespace sondrix {

const PassedOverName& NameOf(PassedOver what) {
  static constexpr std::array<PassedOverName, PassedOverCount> names = {{
      {"bad_rows", "bad rows"},
      {"wrong_checksums", "wrong checksums"},
      {"damaged_bytes", "damaged bytes"},
      {"cut_end", "cut at the end"},
      {"no_depth", "points without a depth"},
      {"long_lines", "lines too long"},
  }};
  return names[static_cast<std::size_t>(what)];
}

}  // namespace sondrix
