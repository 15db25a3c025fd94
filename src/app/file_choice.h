#pragma once

#include "app/session.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// An entry of a file dialog's list: the patterns are joined by ";".
struct FileFilter {
  std::string description, patterns;
};

// The entries of a text "description,patterns,description,patterns". Without a text one blank description
// with "*.*"; a description without patterns gets "*.*" too.
std::vector<FileFilter> ParseFilters(std::string_view text);

// The dialogs and services of a desktop, replaceable. A cancelled askFile returns the empty text, a cancelled
// askFolder nothing.
struct FileDialogs {
  std::function<std::string(const std::string& initial, const std::vector<FileFilter>& filters,
                            const std::string& title)>
      askFile;
  std::function<std::optional<std::string>(const std::string& start, const std::string& title)> askFolder;
  // Opens a file with the program registered for its type; NoAssociation if there is none, anything else
  // isn't reported.
  std::function<int(const std::string& path)> shellOpen;
};

inline constexpr int NoAssociation = 31;

// The chosen path. Empty after a cancel, which is also a path without a separator. A fault is put into the
// log line and counts as a cancel.
std::string OpenDialog(const FileDialogs& dialogs, Window& window, std::string_view initial,
                       std::string_view filter);

// The chosen folder, or start after a cancel or a fault, which is put into the log line.
std::string FolderSel(const FileDialogs& dialogs, Window& window, std::string_view start,
                      std::string_view title);

// A folder to begin with, ending in a separator: the one that the address of the user's file manager names if
// that is a path on a drive, else the program's folder.
std::string OpenPathOf(std::string_view address, std::string_view programFolder);
// The same with the address that is shown now. Empty after a fault, which is put into the log line.
std::string OpenPath(Window& window, std::string_view programFolder);

// What stands for the program's folder where outputs are to go: that folder, or one of the user's own where
// the former can't be written, as that of an installed program.
std::string OutputFolder(std::string_view programFolder, std::string_view userFolder);

// Shows a file in the user's own viewer. The log line tells if no program is registered for its type.
void ShellOpen(const FileDialogs& dialogs, Window& window, const std::string& path);

// The buttons beside the fields. A cancelled choice of the source empties the field.
void SourceClick(Session& session, const FileDialogs& dialogs);
void TargetPathClick(Session& session, const FileDialogs& dialogs, std::string_view programFolder);

}  // namespace sondrix
