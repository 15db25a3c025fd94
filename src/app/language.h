#pragma once

#include "core/messages.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace sondrix {

// The platform's numbers of the languages; 0 means that none is chosen.
using LangId = std::int32_t;
inline constexpr LangId LangRussian = 0x419;
inline constexpr LangId LangEnglish = 0x409;
inline constexpr LangId LangGerman = 0x407;

// The items of boxLang, in their order.
struct LanguageItem {
  std::string_view name;
  LangId id;
};
inline constexpr std::array<LanguageItem, 3> LanguageItems = {
    {{"RUS", LangRussian}, {"ENG", LangEnglish}, {"DEU", LangGerman}}};

// The number of an item, compared with case; 0 for any other text.
LangId LangIdOf(std::string_view item);

// The message table of a language, which lives as long as the program. Null for any other number.
const Messages* MessagesOf(LangId id);

}  // namespace sondrix
