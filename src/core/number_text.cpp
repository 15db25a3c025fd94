#include "core/number_text.h"

#include "core/fault.h"
#include "core/rounding.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>

namespace sondrix {

namespace {

constexpr int DigitsOfDouble = 15;
constexpr int DigitsOfFloat = 7;

enum class ZeroBefore { No, Yes };

// Writes count decimal digits of value, the last one in front of end.
void PutDigits(char* end, std::uint64_t value, int count) {
  for (; count > 0; --count) {
    *--end = static_cast<char>('0' + value % 10);
    value /= 10;
  }
}

// Coordinates, depths and whole numbers have few decimals. If m / 10^decimals is a value's nearest fraction
// of that kind, m has at most 15 digits and the division gives the value back, then the value is the float
// nearest to that decimal; a decimal of 15 digits survives the way into a 64-bit float and back, so these are
// its correctly rounded digits. Returns false where that isn't so.
bool AppendShortDecimal(std::string& out, double value, ZeroBefore zero) {
  const double size = std::fabs(value);
  if (!(size < 1e12)) return false;
  const bool small = size < 1e6;
  const int decimals = small ? 9 : 3;
  const double power = small ? 1e9 : 1e3;
  const auto scaled = static_cast<std::uint64_t>(size * power + 0.5);
  if (scaled >= 1000000000000000U || static_cast<double>(scaled) / power != size) return false;

  const std::uint64_t divisor = small ? 1000000000U : 1000U;
  const std::uint64_t whole = small ? scaled / 1000000000U : scaled / 1000U;
  std::uint64_t fraction = scaled - whole * divisor;

  std::array<char, 24> buffer;
  char* end = buffer.data();
  if (value < 0) *end++ = '-';
  if (whole != 0 || fraction == 0 || zero == ZeroBefore::Yes)
    end = std::to_chars(end, buffer.data() + buffer.size(), whole).ptr;
  if (fraction != 0) {
    int count = decimals;
    for (; fraction % 1000 == 0; count -= 3) fraction /= 1000;
    for (; fraction % 10 == 0; --count) fraction /= 10;
    *end = '.';
    end += 1 + count;
    PutDigits(end, fraction, count);
  }
  out.append(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  return true;
}

void AppendExponentForm(std::string& out, std::string_view digits, int exponent) {
  out += digits[0];
  if (digits.size() > 1) {
    out += '.';
    out += digits.substr(1);
  }
  out += 'E';
  out += exponent < 0 ? '-' : '+';
  const int size = std::abs(exponent);
  if (size < 10) out += '0';
  AppendWhole(out, size);
}

// Any value, rounded to count significant digits by the library's exact conversion.
void AppendRounded(std::string& out, double value, int count, ZeroBefore zero) {
  std::array<char, 32> buffer;
  const double size = std::fabs(Finite(value));
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), size,
                                     std::chars_format::scientific, count - 1);
  // "d.ddde+xx": the point gives way to the first digit, which leaves the digits in one row.
  buffer[1] = buffer[0];
  int exponent = 0;
  const char* tail = buffer.data() + count + 2;
  std::from_chars(*tail == '+' ? tail + 1 : tail, written.ptr, exponent);
  std::string_view digits(buffer.data() + 1, static_cast<std::size_t>(count));
  while (digits.size() > 1 && digits.back() == '0') digits.remove_suffix(1);
  if (digits == "0") {
    out += '0';
    return;
  }

  if (value < 0) out += '-';
  const int before = exponent + 1;
  const int decimals = static_cast<int>(digits.size()) - before;
  if (before > count || decimals > count) {
    AppendExponentForm(out, digits, exponent);
  } else if (before <= 0) {
    out += zero == ZeroBefore::Yes ? "0." : ".";
    out.append(static_cast<std::size_t>(-before), '0');
    out += digits;
  } else if (decimals <= 0) {
    out += digits;
    out.append(static_cast<std::size_t>(-decimals), '0');
  } else {
    out += digits.substr(0, static_cast<std::size_t>(before));
    out += '.';
    out += digits.substr(static_cast<std::size_t>(before));
  }
}

void AppendText(std::string& out, double value, ZeroBefore zero) {
  if (!AppendShortDecimal(out, value, zero)) AppendRounded(out, value, DigitsOfDouble, zero);
}

constexpr std::array<double, 16> PowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Seven digits of a 32-bit float from a tenth up, which never needs the exponent form. The product that
// scales it up is off by less than 2e-9, so its nearest whole number is the correctly rounded one unless a
// tie is as near as that. Returns false there, and for a value of another size.
bool AppendShortFloat(std::string& out, double value, ZeroBefore zero) {
  const double size = std::fabs(value);
  if (!(size >= 0.1 && size < 1e7)) return false;
  std::size_t decimals = 0;
  while (size * PowersOfTen[decimals] < 1e6) ++decimals;
  const double scaled = size * PowersOfTen[decimals];
  const auto digits = static_cast<std::uint64_t>(scaled);
  const double rest = scaled - static_cast<double>(digits);
  if (std::fabs(rest - 0.5) < 1e-8) return false;
  const std::uint64_t rounded = digits + (rest > 0.5 ? 1 : 0);
  const double shortened = static_cast<double>(rounded) / PowersOfTen[decimals];
  return AppendShortDecimal(out, value < 0 ? -shortened : shortened, zero);
}

void AppendText(std::string& out, float value, ZeroBefore zero) {
  if (AppendShortFloat(out, static_cast<double>(value), zero)) return;
  AppendRounded(out, static_cast<double>(value), DigitsOfFloat, zero);
}

// A number text without blanks and with a period as mark.
struct PlainNumber {
  std::string text;
  int digits = 0;     // digits outside the exponent
  int magnitude = 0;  // place of the first nonzero digit: 1 for the ones, 0 for the tenths
  bool nonzero = false;
  bool marked = false;

  void AddDigit(char c) {
    text += c;
    ++digits;
    if (c != '0') nonzero = true;
    if (nonzero && !marked) ++magnitude;
    if (!nonzero && marked) --magnitude;
  }
  void AddMark() {
    text += '.';
    marked = true;
  }
};

// The value of the plain text: 0 below the range of a 64-bit float, infinity above it.
double ValueOf(const PlainNumber& number, int exponent) {
  const char* begin = number.text.data();
  double value = 0;
  const auto read = std::from_chars(begin, begin + number.text.size(), value);
  if (read.ec != std::errc::result_out_of_range) return value;
  if (number.magnitude + exponent <= 0) return 0;
  const double huge = std::numeric_limits<double>::infinity();
  return number.text[0] == '-' ? -huge : huge;
}

// The exponent behind an E, held within a range that neither over- nor underflows a sum.
int ExponentOf(std::string_view digits, bool negative) {
  int exponent = 0;
  for (const char c : digits) exponent = std::min(exponent * 10 + (c - '0'), 1000000);
  return negative ? -exponent : exponent;
}

// Length in bytes of the blank at the start of text, 0 if there is none. A no-break space may also come as
// the byte that it has in an 8-bit source; no character of UTF-8 begins with that.
std::size_t BlankAt(std::string_view text) {
  if (text.empty()) return 0;
  if (text[0] == ' ' || (text[0] >= '\t' && text[0] <= '\r')) return 1;
  if (text[0] == '\xA0') return 1;
  return text.starts_with("\u00A0") ? 2 : 0;
}

void SkipBlanks(std::string_view& text) {
  while (const std::size_t length = BlankAt(text)) text.remove_prefix(length);
}

// Takes "E", an optional sign and digits off the start of text into number; false, and nothing taken, where
// these don't stand there.
bool TakeExponent(std::string_view& text, PlainNumber& number, int& exponent) {
  if (text.empty() || (text[0] != 'E' && text[0] != 'e')) return false;
  std::size_t begin = 1;
  const bool sign = begin < text.size() && (text[begin] == '+' || text[begin] == '-');
  const bool negative = sign && text[begin] == '-';
  if (sign) ++begin;
  std::size_t end = begin;
  while (end < text.size() && IsDigit(text[end])) ++end;
  if (end == begin) return false;
  exponent = ExponentOf(text.substr(begin, end - begin), negative);
  number.text += 'E';
  AppendWhole(number.text, exponent);
  text.remove_prefix(end);
  return true;
}

void TakeSign(std::string_view& text, PlainNumber& number) {
  if (text.empty() || (text[0] != '+' && text[0] != '-')) return;
  if (text[0] == '-') number.text += '-';
  text.remove_prefix(1);
}

// Reads digits into number and returns where they end.
const char* TakeDigits(const char* at, const char* end, std::uint64_t& number) {
  for (; at < end && IsDigit(*at); ++at) number = number * 10 + static_cast<std::uint64_t>(*at - '0');
  return at;
}

// The value of a text of at most 15 digits with a minus sign and a mark or without. Both whole numbers of the
// quotient are exact, so that it is the nearest 64-bit float. False for any other text, which may still be a
// number.
bool ParseShort(std::string_view text, double& value) {
  const char* at = text.data();
  const char* const end = at + text.size();
  const bool negative = text.starts_with('-');
  if (negative) ++at;
  if (end - at > DigitsOfDouble + 1) return false;
  std::uint64_t number = 0;
  const char* const begin = at;
  at = TakeDigits(at, end, number);
  auto digits = at - begin;
  value = 1;
  if (at < end && (*at == '.' || *at == ',')) {
    const char* const fraction = ++at;
    at = TakeDigits(at, end, number);
    digits += at - fraction;
    value = PowersOfTen[static_cast<std::size_t>(at - fraction)];
  }
  if (at != end || digits == 0 || digits > DigitsOfDouble) return false;
  value = static_cast<double>(number) / value;
  if (negative) value = -value;
  return true;
}

// Nothing for a text that isn't a number; infinity for one that is too large.
std::optional<double> ParseLocal(std::string_view text) {
  PlainNumber number;
  SkipBlanks(text);
  TakeSign(text, number);
  bool afterDigit = false;
  while (!text.empty()) {
    const char c = text[0];
    if (IsDigit(c)) {
      number.AddDigit(c);
    } else if ((c == '.' || c == ',') && !number.marked) {
      number.AddMark();
    } else {
      std::string_view rest = text;
      SkipBlanks(rest);
      const bool between = rest.size() < text.size() && afterDigit && !rest.empty() && IsDigit(rest[0]);
      if (!between) break;
      text = rest;
      continue;
    }
    afterDigit = IsDigit(c);
    text.remove_prefix(1);
  }
  if (number.digits == 0) return std::nullopt;
  int exponent = 0;
  TakeExponent(text, number, exponent);
  SkipBlanks(text);
  if (!text.empty()) return std::nullopt;
  return ValueOf(number, exponent);
}

}  // namespace

void AppendNumText(std::string& out, double value) { AppendText(out, value, ZeroBefore::No); }
void AppendNumText(std::string& out, float value) { AppendText(out, value, ZeroBefore::No); }

std::string NumText(double value) {
  std::string text;
  AppendNumText(text, value);
  return text;
}

std::string NumText(float value) {
  std::string text;
  AppendNumText(text, value);
  return text;
}

std::string LocText(double value) {
  std::string text;
  AppendText(text, value, ZeroBefore::Yes);
  return text;
}

std::string LocText(float value) {
  std::string text;
  AppendText(text, value, ZeroBefore::Yes);
  return text;
}

void AppendWhole(std::string& out, std::int64_t value) {
  std::array<char, 24> buffer;
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  out.append(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
}

double ValOf(std::string_view text) {
  std::string compact;
  while (!text.empty()) {
    if (const std::size_t length = BlankAt(text)) {
      text.remove_prefix(length);
      continue;
    }
    const char c = text[0];
    if (!IsDigit(c) && c != '.' && c != '+' && c != '-' && c != 'E' && c != 'e') break;
    compact += c;
    text.remove_prefix(1);
  }

  PlainNumber number;
  std::string_view rest = compact;
  TakeSign(rest, number);
  for (; !rest.empty(); rest.remove_prefix(1)) {
    if (IsDigit(rest[0])) {
      number.AddDigit(rest[0]);
    } else if (rest[0] == '.' && !number.marked) {
      number.AddMark();
    } else {
      break;
    }
  }
  if (number.digits == 0) return 0;
  int exponent = 0;
  TakeExponent(rest, number, exponent);
  return ValueOf(number, exponent);
}

double LocParse(std::string_view text) {
  if (double value = 0; ParseShort(text, value)) return value;
  const std::optional<double> value = ParseLocal(text);
  if (!value) throw Fault(FaultNumber::TypeMismatch);
  return Finite(*value);
}

std::string_view Nz(std::string_view text) { return text.empty() ? "0" : text; }

bool IsNumeric(std::string_view text) {
  const std::optional<double> value = ParseLocal(text);
  return value && std::isfinite(*value);
}

std::string PadDecimals(std::string_view text, int width) {
  std::string padded(text);
  if (padded.find('.') == std::string::npos) padded += ".0";
  const std::size_t decimals = padded.size() - padded.find('.') - 1;
  const auto wanted = static_cast<std::size_t>(std::max(width, 0));
  if (decimals < wanted) padded.append(wanted - decimals, '0');
  return padded;
}

}  // namespace sondrix
