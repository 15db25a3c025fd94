#pragma once

#include "app/language.h"

#include <array>
#include <span>
#include <string_view>

namespace sondrix {

enum class CaptionKind { Caption, Tip };

// A caption or a tool tip of the window in the three languages. An empty caption leaves the element
// as it is, an empty tip takes it away.
struct CaptionRow {
  std::string_view element;
  CaptionKind kind;
  std::string_view english, russian, german;
};

std::span<const CaptionRow> CaptionRows();

// Empty for a number without a table.
std::string_view TextOf(const CaptionRow& row, LangId id);

// The line that a language puts into the log line. Empty for a number without a table.
std::string_view HintHelpOf(LangId id);

// The character set of labels and text fields, which the help text reports.
constexpr int CharacterSetOf(LangId id) { return id == LangRussian ? 204 : 0; }

// The window is built with the captions of this language; another one overwrites them.
inline constexpr LangId LangOfBuilding = LangRussian;

// What is the same in all languages.
struct FixedCaption {
  std::string_view element, text;
};
inline constexpr std::array<FixedCaption, 12> FixedCaptions = {{{"btnGO", "!!!"},
                                                                {"RunSet", "II"},
                                                                {"RunEnd", "X"},
                                                                {"MakeScrn", "[-]"},
                                                                {"WPT", "/\\/"},
                                                                {"WPF", ">)>"},
                                                                {"btnHelp", "???"},
                                                                {"FrmSize", "<<"},
                                                                {"btnSource", "..."},
                                                                {"btnTargetPath", "..."},
                                                                {"lblDucerY", "/"},
                                                                {"lblMaxProc", "/"}}};

}  // namespace sondrix
