#pragma once

#include <string_view>

namespace sondrix {

// The help pages, lines ending in LF. Topics have the same order in all of them: title, what works, what
// doesn't, notes, history, terms. VersionMark stands for the program's version.
extern const std::string_view HelpEnglish, HelpRussian, HelpGerman;

inline constexpr std::string_view VersionMark = "{version}";

}  // namespace sondrix
