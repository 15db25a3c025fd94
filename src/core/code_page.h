#pragma once

#include <string>
#include <string_view>

namespace sondrix {

// UTF-8 to the 8-bit bytes of files: windows-1251; a letter that it lacks and windows-1252 has (as the German
// ones) goes out as its 1252 byte, any other as "?". A byte that is no UTF-8 goes out as "?" too.
std::string ToCodePage(std::string_view utf8);

// windows-1251 bytes to UTF-8. The one unassigned byte (0x98) becomes U+0098.
std::string FromCodePage(std::string_view bytes);

// Appends the character of a code point below U+10000.
void AppendUtf8(std::string& text, unsigned codePoint);

// The text with U+FFFD in the place of each byte that is no UTF-8.
std::string ValidUtf8(std::string_view text);

// Count of characters of a UTF-8 text, and the text from the character of that index (from 0) on.
std::size_t CharacterCount(std::string_view utf8);
std::string_view FromCharacter(std::string_view utf8, std::size_t index);

}  // namespace sondrix
