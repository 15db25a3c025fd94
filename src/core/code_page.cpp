#include "core/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace sondrix {

namespace {

// windows-1251 from 0x80 on.
constexpr std::array<char16_t, 128> Cyrillic = {
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021, 0x20AC, 0x2030, 0x0409, 0x2039, 0x040A,
    0x040C, 0x040B, 0x040F, 0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F, 0x00A0, 0x040E, 0x045E, 0x0408, 0x00A4, 0x0490, 0x00A6,
    0x00A7, 0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x0407, 0x00B0, 0x00B1, 0x0406, 0x0456,
    0x0491, 0x00B5, 0x00B6, 0x00B7, 0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455, 0x0457, 0x0410,
    0x0411, 0x0412, 0x0413, 0x0414, 0x0415, 0x0416, 0x0417, 0x0418, 0x0419, 0x041A, 0x041B, 0x041C, 0x041D,
    0x041E, 0x041F, 0x0420, 0x0421, 0x0422, 0x0423, 0x0424, 0x0425, 0x0426, 0x0427, 0x0428, 0x0429, 0x042A,
    0x042B, 0x042C, 0x042D, 0x042E, 0x042F, 0x0430, 0x0431, 0x0432, 0x0433, 0x0434, 0x0435, 0x0436, 0x0437,
    0x0438, 0x0439, 0x043A, 0x043B, 0x043C, 0x043D, 0x043E, 0x043F, 0x0440, 0x0441, 0x0442, 0x0443, 0x0444,
    0x0445, 0x0446, 0x0447, 0x0448, 0x0449, 0x044A, 0x044B, 0x044C, 0x044D, 0x044E, 0x044F};

struct Letter {
  char16_t codePoint;
  std::uint8_t byte;
};

// The letters of windows-1252 whose byte isn't their code point.
constexpr Letter MovedLetters[] = {{0x0192, 0x83}, {0x0160, 0x8A}, {0x0152, 0x8C}, {0x017D, 0x8E},
                                   {0x0161, 0x9A}, {0x0153, 0x9C}, {0x017E, 0x9E}, {0x0178, 0x9F}};

bool IsLatinLetter(char32_t codePoint) {
  if (codePoint == 0xAA || codePoint == 0xBA) return true;
  return codePoint >= 0xC0 && codePoint <= 0xFF && codePoint != 0xD7 && codePoint != 0xF7;
}

std::uint8_t ByteOf(char32_t codePoint) {
  if (codePoint < 0x80) return static_cast<std::uint8_t>(codePoint);
  const auto* const found = std::find(Cyrillic.begin(), Cyrillic.end(), codePoint);
  if (found != Cyrillic.end()) return static_cast<std::uint8_t>(0x80 + (found - Cyrillic.begin()));
  for (const Letter& letter : MovedLetters) {
    if (letter.codePoint == codePoint) return letter.byte;
  }
  return IsLatinLetter(codePoint) ? static_cast<std::uint8_t>(codePoint) : std::uint8_t{'?'};
}

constexpr char32_t NoCharacter = 0xFFFFFFFF;

struct Decoded {
  char32_t codePoint;
  std::size_t length;
};

// The character at the start of a text that isn't empty. A byte that begins none, or none in its shortest
// form, is NoCharacter of length 1.
Decoded Decode(std::string_view text) {
  const auto first = static_cast<std::uint8_t>(text[0]);
  if (first < 0x80) return {first, 1};
  constexpr Decoded bad = {NoCharacter, 1};
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() < length) return bad;
  char32_t codePoint = first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<std::uint8_t>(text[i]);
    if ((next & 0xC0U) != 0x80U) return bad;
    codePoint = (codePoint << 6U) | (next & 0x3FU);
  }
  const bool tooLong = (length == 3 && codePoint < 0x800) || (length == 4 && codePoint < 0x10000);
  const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
  if (tooLong || surrogate || codePoint > 0x10FFFF) return bad;
  return {codePoint, length};
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<std::uint8_t>(c) < 0x80; });
}

}  // namespace

std::string ToCodePage(std::string_view utf8) {
  if (IsAscii(utf8)) return std::string(utf8);
  std::string bytes;
  bytes.reserve(utf8.size());
  while (!utf8.empty()) {
    const Decoded next = Decode(utf8);
    bytes += next.codePoint == NoCharacter ? '?' : static_cast<char>(ByteOf(next.codePoint));
    utf8.remove_prefix(next.length);
  }
  return bytes;
}

std::string FromCodePage(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size() * 2);
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    AppendUtf8(text, byte < 0x80 ? byte : Cyrillic[byte - 0x80U]);
  }
  return text;
}

void AppendUtf8(std::string& text, unsigned codePoint) {
  if (codePoint < 0x80) {
    text += static_cast<char>(codePoint);
    return;
  }
  if (codePoint < 0x800) {
    text += static_cast<char>(0xC0U | (codePoint >> 6U));
  } else {
    text += static_cast<char>(0xE0U | (codePoint >> 12U & 0x0FU));
    text += static_cast<char>(0x80U | (codePoint >> 6U & 0x3FU));
  }
  text += static_cast<char>(0x80U | (codePoint & 0x3FU));
}

std::string ValidUtf8(std::string_view text) {
  constexpr std::string_view replacement = "\xEF\xBF\xBD";
  std::string valid;
  valid.reserve(text.size());
  while (!text.empty()) {
    const Decoded next = Decode(text);
    valid += next.codePoint == NoCharacter ? replacement : text.substr(0, next.length);
    text.remove_prefix(next.length);
  }
  return valid;
}

std::size_t CharacterCount(std::string_view utf8) {
  std::size_t count = 0;
  for (; !utf8.empty(); ++count) utf8.remove_prefix(Decode(utf8).length);
  return count;
}

std::string_view FromCharacter(std::string_view utf8, std::size_t index) {
  for (; index > 0 && !utf8.empty(); --index) utf8.remove_prefix(Decode(utf8).length);
  return utf8;
}

}  // namespace sondrix
