#include "core/sounding.h"

#include <array>

namespace sondrix {

std::string_view NameOf(Fate fate) {
  static constexpr std::array<std::string_view, FateCount> names = {"used", "no-position", "blind",
                                                                    "lost", "spike",       "repeat"};
  return names[static_cast<std::size_t>(fate)];
}

}  // namespace sondrix
