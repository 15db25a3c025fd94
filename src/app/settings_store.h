#pragma once

#include "app/load_settings.h"
#include "app/session.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace sondrix {

// The path of a file of the program's own: stem + extension (".ini", ".txt") in the program's folder, or in
// the user's configuration folder where the former can't be written.
std::string StorePath(std::string_view programFolder, std::string_view configFolder, std::string_view stem,
                      std::string_view extension);
// The same with the folders and the stem of the running program.
std::string StorePath(std::string_view extension);
// The path beside the running program, whether or not it can be written.
std::string PathBesideProgram(std::string_view extension);

// Whether the folder of the path lists a file of exactly that name, compared with case.
bool IsListed(std::string_view path);

// What a start does: the fields from the ini file if it is listed. Without one TargetPath takes the folder
// that openPath guesses and the rest keeps its defaults.
std::optional<LoadFault> LoadAtStart(Session& session, std::string_view iniFile,
                                     const std::function<std::string()>& openPath);

// Writes all keys. The file is replaced as a whole, its other keys, sections and comments are kept; on a
// fault the old one stays whole. False if nothing was written.
bool WriteSettings(const Session& session, std::string_view iniFile);

// What a closing does: ends the link to the map program if one was opened, then writes all keys, kind by kind
// of field. The channel is that of the state at closing. The file is replaced as a whole, its other keys,
// sections and comments are kept; on a fault the old one stays whole and nothing is reported. False if
// nothing was written.
bool SaveSettings(Session& session, std::string_view iniFile);

}  // namespace sondrix
