#include "sounders/sl/sl_name_date.h"

#include "core/text.h"
#include "sounders/common/calendar.h"

#include <cstddef>

namespace sondrix {
namespace {

// Digits stand for themselves, all else for one character that is no digit.
constexpr std::string_view Form = "0000-00-00_00.00.00";

int NumberAt(std::string_view text, std::size_t at, std::size_t digits) {
  int number = 0;
  for (const char c : text.substr(at, digits)) number = 10 * number + (c - '0');
  return number;
}

bool HasForm(std::string_view text) {
  for (std::size_t i = 0; i < Form.size(); ++i) {
    if (IsDigit(text[i]) != IsDigit(Form[i])) return false;
  }
  return true;
}

}  // namespace

std::optional<double> DateOfName(std::string_view name) {
  for (std::size_t at = 0; at + Form.size() <= name.size(); ++at) {
    const std::string_view text = name.substr(at, Form.size());
    if (!HasForm(text)) continue;
    const std::optional<int> day = DayOf(NumberAt(text, 0, 4), NumberAt(text, 5, 2), NumberAt(text, 8, 2));
    const int hour = NumberAt(text, 11, 2), minute = NumberAt(text, 14, 2), second = NumberAt(text, 17, 2);
    if (!day || hour > 23 || minute > 59 || second > 59) continue;
    return *day * SecondsOfDay + hour * 3600 + minute * 60 + second;
  }
  return std::nullopt;
}

}  // namespace sondrix
