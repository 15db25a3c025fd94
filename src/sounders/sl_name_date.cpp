#include "sounders/sl_name_date.h"

#include <chrono>
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
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  for (std::size_t i = 0; i < Form.size(); ++i) {
    if (isDigit(text[i]) != isDigit(Form[i])) return false;
  }
  return true;
}

}  // namespace

std::optional<double> DateOfName(std::string_view name) {
  for (std::size_t at = 0; at + Form.size() <= name.size(); ++at) {
    const std::string_view text = name.substr(at, Form.size());
    if (!HasForm(text)) continue;
    using namespace std::chrono;
    const year_month_day day{year(NumberAt(text, 0, 4)), month(static_cast<unsigned>(NumberAt(text, 5, 2))),
                             std::chrono::day(static_cast<unsigned>(NumberAt(text, 8, 2)))};
    const int hour = NumberAt(text, 11, 2), minute = NumberAt(text, 14, 2), second = NumberAt(text, 17, 2);
    if (!day.ok() || hour > 23 || minute > 59 || second > 59) continue;
    const auto days = sys_days(day).time_since_epoch().count();
    return static_cast<double>(((days * 24LL + hour) * 60 + minute) * 60 + second);
  }
  return std::nullopt;
}

}  // namespace sondrix
