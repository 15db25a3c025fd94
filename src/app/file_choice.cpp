#include "app/file_choice.h"

#include "app/settings_store.h"
#include "core/code_page.h"
#include "core/fault.h"
#include "core/files.h"
#include "core/text.h"
#include "platform/platform.h"

#include <algorithm>

namespace sondrix {
namespace {

constexpr std::string_view AnyFile = "*.*";
constexpr std::string_view SourceTitle = "Выберите исходный файл:";
constexpr std::size_t MaxInitial = 255;  // characters

std::string_view UpToZero(std::string_view text) { return text.substr(0, text.find('\0')); }

std::string NumberAnd(std::string_view between, const Fault& fault) {
  return std::to_string(fault.Number()) + std::string(between) + std::string(fault.Description());
}

}  // namespace

std::vector<FileFilter> ParseFilters(std::string_view text) {
  if (text.empty()) return {{" ", std::string(AnyFile)}};
  std::vector<FileFilter> filters;
  while (true) {
    const std::size_t first = text.find(',');
    if (first == std::string_view::npos) {
      filters.push_back({std::string(text), std::string(AnyFile)});
      return filters;
    }
    const std::size_t second = text.find(',', first + 1);
    filters.push_back({std::string(text.substr(0, first)),
                       std::string(text.substr(
                           first + 1, second == std::string_view::npos ? second : second - first - 1))});
    if (second == std::string_view::npos) return filters;
    text.remove_prefix(second + 1);
  }
}

std::string OpenDialog(const FileDialogs& dialogs, Window& window, std::string_view initial,
                       std::string_view filter) {
  try {
    const std::string_view trimmed = Trimmed(initial);
    const std::size_t cut = FromCharacter(trimmed, MaxInitial).size();
    const std::string chosen = dialogs.askFile(std::string(trimmed.substr(0, trimmed.size() - cut)),
                                               ParseFilters(filter), std::string(SourceTitle));
    const std::string_view path = UpToZero(chosen);
    return std::any_of(path.begin(), path.end(), IsSeparator) ? std::string(path) : std::string();
  } catch (...) {
    window.SetAtt("ошибка OpenDialog: " + NumberAnd(". ", CaughtFault()), LineKind::Fault);
    return {};
  }
}

std::string FolderSel(const FileDialogs& dialogs, Window& window, std::string_view start,
                      std::string_view title) {
  std::string folder(start);
  try {
    const auto chosen = dialogs.askFolder(folder, std::string(title));
    if (chosen) folder = UpToZero(*chosen);
  } catch (...) {
    window.SetAtt("ошибка FolderSel: " + NumberAnd(". ", CaughtFault()), LineKind::Fault);
  }
  return folder;
}

std::string OpenPathOf(std::string_view address, std::string_view programFolder) {
  const std::string_view path = Trimmed(UpToZero(address));
  const std::size_t letter = path.size() - FromCharacter(path, 1).size();
  const bool isOnDrive = path.size() > letter && path[letter] == ':';
  return WithSeparator(isOnDrive ? path : programFolder);
}

std::string OpenPath(Window& window, std::string_view programFolder) {
  try {
    return OpenPathOf(FileManagerAddress(), programFolder);
  } catch (...) {
    window.SetAtt("ошибка OpenPath:" + NumberAnd(" - ", CaughtFault()), LineKind::Fault);
    return {};
  }
}

std::string OutputFolder(std::string_view programFolder, std::string_view userFolder) {
  return std::string(CanWriteFolder(programFolder) ? programFolder : userFolder);
}

void ShellOpen(const FileDialogs& dialogs, Window& window, const std::string& path) {
  if (dialogs.shellOpen(path) == NoAssociation) window.SetAtt("неизвестный тип файла...");
}

void SourceClick(Session& session, const FileDialogs& dialogs) {
  session.settings.Source = OpenDialog(dialogs, session.window, {}, session.messages.FilterSource);
  session.window.ShowField("Source");
}

void TargetPathClick(Session& session, const FileDialogs& dialogs, std::string_view programFolder) {
  std::string& target = session.settings.TargetPath;
  if (target.empty()) target = programFolder;
  target = FolderSel(dialogs, session.window, target, session.messages.TitleFolder);
  session.window.ShowField("TargetPath");
}

}  // namespace sondrix
