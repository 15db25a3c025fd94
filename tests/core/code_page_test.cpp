#include "core/code_page.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(CodePage, EveryByteSurvivesTheWayThere) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(ToCodePage(FromCodePage(bytes)), bytes);
  EXPECT_EQ(FromCodePage(bytes.substr(128)),
            "ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏђ‘’“”•–—\xC2\x98"
            "™љ›њќћџ\xC2\xA0"
            "ЎўЈ¤Ґ¦§Ё©Є«¬\xC2\xAD"
            "®Ї°±Ііґµ¶·ё№є»јЅѕї"
            "АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмнопрстуфхцчшщъыьэюя");
}

TEST(CodePage, WritesLettersOfBothPages) {
  const char* const rows[][2] = {
      {"Глубина ё №", "\xC3\xEB\xF3\xE1\xE8\xED\xE0 \xB8 \xB9"},
      {"Šœéß", "\x8A\x9C\xE9\xDF"},
      {"€„“", "\x88\x84\x93"},
      {"×½水😀", "????"},
      {"a\xFFz", "a?z"},
      {"\xC0\x80\xE0\x83\xA9\xED\xA0\x80", "????????"},  // overlong, surrogate
      {"\xF4\x90\x80\x80", "????"},                      // beyond the last character
      {"\xE2\x82", "??"},                                // cut off
  };
  for (const auto& row : rows) EXPECT_EQ(ToCodePage(row[0]), row[1]) << row[0];
}

}  // namespace
}  // namespace sondrix
