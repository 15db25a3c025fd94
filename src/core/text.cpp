#include "core/text.h"

namespace sondrix {

void AppendFilled(std::string& out, std::string_view pattern,
                  std::initializer_list<std::string_view> values) {
  while (!pattern.empty()) {
    const std::size_t open = pattern.find('{');
    out.append(pattern.substr(0, open));
    if (open == std::string_view::npos) return;
    const auto index = static_cast<std::size_t>(pattern[open + 1] - '0');
    if (index < values.size()) out.append(values.begin()[index]);
    pattern.remove_prefix(open + std::string_view("{0}").size());
  }
}

std::string Filled(std::string_view pattern, std::initializer_list<std::string_view> values) {
  std::string out;
  AppendFilled(out, pattern, values);
  return out;
}

}  // namespace sondrix
