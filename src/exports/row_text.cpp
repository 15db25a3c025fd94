#include "exports/row_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace sondrix {
namespace {

// "00" to "99".
constexpr std::array<char, 200> Pairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

constexpr std::array<std::uint64_t, 9> Powers = {1,      10,      100,      1000,     10000,
                                                 100000, 1000000, 10000000, 100000000};

// Beyond these a number of units has no exact 64-bit float.
constexpr double MaxUnits = 9e15;

// The last digits of a number, with zeros before it.
void PutDigits(char* to, std::uint64_t number, int digits) {
  for (; digits >= 2; digits -= 2, number /= 100) std::memcpy(to + digits - 2, &Pairs[2 * (number % 100)], 2);
  if (digits == 1) to[0] = static_cast<char>('0' + number % 10);
}

char* PutWhole(char* to, std::uint64_t number) {
  int digits = 1;
  for (std::uint64_t rest = number; rest >= 10; rest /= 10) ++digits;
  PutDigits(to, number, digits);
  return to + digits;
}

}  // namespace

char* RowText::Room(std::size_t bytes) {
  if (capacity_ - size_ < bytes) {
    constexpr std::size_t step = std::size_t{1} << 20;
    const std::size_t capacity = std::max(capacity_ * 2, size_ + bytes + step);
    auto more = std::make_unique_for_overwrite<char[]>(capacity);
    if (size_ > 0) std::memcpy(more.get(), bytes_.get(), size_);
    bytes_ = std::move(more);
    capacity_ = capacity;
  }
  return bytes_.get() + size_;
}

void RowText::Append(std::string_view text) { EndAt(PutChars(Room(text.size()), text)); }

char* PutFixed(char* to, std::int64_t units, int decimals, bool isTrimmed) {
  auto magnitude = static_cast<std::uint64_t>(units);
  if (units < 0) {
    *to++ = '-';
    magnitude = 0 - magnitude;
  }
  const std::uint64_t one = Powers[static_cast<std::size_t>(decimals)];
  to = PutWhole(to, magnitude / one);
  if (decimals == 0) return to;
  *to++ = '.';
  PutDigits(to, magnitude % one, decimals);
  to += decimals;
  if (!isTrimmed) return to;
  while (to[-1] == '0') --to;
  return to[-1] == '.' ? to - 1 : to;
}

char* PutNumber(char* to, double value, int decimals, bool isTrimmed) {
  const double units = value * static_cast<double>(Powers[static_cast<std::size_t>(decimals)]);
  if (!(std::abs(units) < MaxUnits)) return to;
  return PutFixed(to, static_cast<std::int64_t>(units + std::copysign(0.5, units)), decimals, isTrimmed);
}

char* PutDegrees(char* to, double degrees) { return PutNumber(to, degrees, 8, false); }
char* PutMetres(char* to, float metres) { return PutNumber(to, static_cast<double>(metres), 3, true); }
char* PutSeconds(char* to, double seconds) { return PutNumber(to, seconds, 3, true); }

char* PutChars(char* to, std::string_view text) {
  std::memcpy(to, text.data(), text.size());
  return to + text.size();
}

}  // namespace sondrix
