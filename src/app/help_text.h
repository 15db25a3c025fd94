#pragma once

#include "app/file_choice.h"
#include "app/session.h"

#include <string>
#include <string_view>
#include <utility>

namespace sondrix {

// What the end of the help text reports for a support request.
struct HelpReport {
  std::pair<int, int> systemVersion;  // major, minor
  int systemLanguage = 0, userLanguage = 0;
  std::string font;  // of lblDepthSm
  int characterSet = 0;
};

// The help of a language, lines ending in CR LF. Empty for a number without a table.
std::string HelpTextOf(LangId id);

// The report lines; the last one has no line end.
std::string ReportLines(const HelpReport& report);

// The click of the help button: replaces the file by help and report, and opens it in the user's viewer.
// Faults end in the log line. Can run in the middle of a job.
void ShowHelp(Session& session, std::string_view file, const HelpReport& report, const FileDialogs& dialogs);

}  // namespace sondrix
