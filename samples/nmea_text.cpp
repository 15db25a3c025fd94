#include "samples/nmea_text.h"

#include "samples/text_steps.h"

#include <chrono>
#include <cmath>
#include <string_view>

namespace sondrix {

void AddNmeaTime(std::string& text, std::int64_t time) {
  const std::int64_t inDay = time % 86'400;
  AddDigits(text, inDay / 3600 * 10'000 + inDay / 60 % 60 * 100 + inDay % 60, 6);
}

void AddNmeaDate(std::string& text, std::int64_t time) {
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{time / 86'400}}};
  AddDigits(text, static_cast<unsigned>(date.day()), 2);
  AddDigits(text, static_cast<unsigned>(date.month()), 2);
  AddDigits(text, static_cast<int>(date.year()) % 100, 2);
}

void AddNmeaAngle(std::string& text, double degrees, std::size_t digits, std::size_t decimals) {
  std::int64_t minute = 1;  // in the last decimal, so that no minute is 60
  for (std::size_t i = 0; i < decimals; ++i) minute *= 10;
  const std::int64_t minutes = std::llround(std::abs(degrees) * 60 * static_cast<double>(minute));
  AddDigits(text, minutes / (60 * minute), digits);
  AddDigits(text, minutes / minute % 60, 2);
  text += '.';
  AddDigits(text, minutes % minute, decimals);
}

void CloseNmea(std::string& text, std::size_t start) {
  unsigned sum = 0;
  for (std::size_t i = start + 1; i < text.size(); ++i) sum ^= static_cast<unsigned char>(text[i]);
  constexpr std::string_view digits = "0123456789ABCDEF";
  text += '*';
  text += digits[sum >> 4];
  text += digits[sum & 15];
  text += "\r\n";
}

}  // namespace sondrix
