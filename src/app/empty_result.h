#pragma once

#include "app/language.h"

#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

struct RunResult;
struct Settings;

// Why a run of the source wrote no point, told from its result: the reason first, then what other channels
// have. None where points were written, and where the run's own line says all that is known.
std::vector<std::string> WhyEmpty(const RunResult& result, const Settings& settings, std::string_view source,
                                  LangId langId);

// The same in a line; empty for none.
std::string WhyEmptyLine(const RunResult& result, const Settings& settings, std::string_view source,
                         LangId langId);

// The advice on a source whose extension is taken for a table's for its capital letters alone. Empty for any
// other.
std::string ExtensionNote(std::string_view source, LangId langId);

// "Primary", or "channel 7" for a number that has no name.
std::string ChannelName(int number, LangId langId);

}  // namespace sondrix
