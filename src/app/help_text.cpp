#include "app/help_text.h"

#include "app/help_pages.h"
#include "app/settings_store.h"
#include "core/fault.h"
#include "core/files.h"

#include <cstdint>

namespace sondrix {
namespace {

constexpr std::string_view LineEnd = "\r\n";

std::string_view PageOf(LangId id) {
  switch (id) {
    case LangRussian:
      return HelpRussian;
    case LangEnglish:
      return HelpEnglish;
    case LangGerman:
      return HelpGerman;
    default:
      return {};
  }
}

// The numbers are the platform's, 16 bits wide.
std::string SignedWord(int number) { return std::to_string(static_cast<std::int16_t>(number)); }

}  // namespace

std::string HelpTextOf(LangId id) {
  std::string text;
  for (const char c : PageOf(id)) {
    if (c == '\n') {
      text += LineEnd;
    } else {
      text += c;
    }
  }
  const std::size_t mark = text.find(VersionMark);
  if (mark != std::string::npos) text.replace(mark, VersionMark.size(), SONDRIX_VERSION);
  return text;
}

std::string ReportLines(const HelpReport& report) {
  const auto& [major, minor] = report.systemVersion;
  return "Windows version: " + std::to_string(major) + "." + std::to_string(minor) + std::string(LineEnd) +
         "System/User lang: " + SignedWord(report.systemLanguage) + "/" + SignedWord(report.userLanguage) +
         std::string(LineEnd) + "Soft Font/Charset: " + report.font + "/" +
         std::to_string(report.characterSet);
}

void ShowHelp(Session& session, std::string_view file, const HelpReport& report, const FileDialogs& dialogs) {
  try {
    session.outputs.Guard(file);
    if (IsListed(file)) DeleteIfThere(file);
    MakeFolders(file);
    const std::string help = HelpTextOf(session.langId);
    Outputs apart = session.outputs;  // no output of the run that may be going on
    apart.WriteF(file, help + "\r\n\r\n\r\n" + ReportLines(report), session.window);
    ShellOpen(dialogs, session.window, std::string(file));
  } catch (...) {
    session.window.Beep();
    session.window.SetAtt(FaultLine("btnHelp_Click", CaughtFault()), LineKind::Fault);
  }
}

}  // namespace sondrix
