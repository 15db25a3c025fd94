#include "app/settings_store.h"

#include "app/ini_file.h"
#include "core/fault.h"
#include "core/files.h"
#include "platform/platform.h"

#include <algorithm>
#include <filesystem>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

std::string ValueOf(const Session& session, std::string_view key) {
  if (key == "UseEho") return std::to_string(session.state.SelectedChannel);
  const std::span<const Field> fields = Fields();
  const auto field =
      std::find_if(fields.begin(), fields.end(), [key](const Field& one) { return one.key == key; });
  return FieldText(session.settings, *field);
}

void EndLink(OziLink& link) {
  if (!link.IsOpen) return;
  link.IsOpen = false;
  link.CloseApi();
}

}  // namespace

std::string WithSeparator(std::string_view folder) {
  std::string text(folder);
  if (text.empty() || !IsSeparator(text.back())) text += PathSeparator;
  return text;
}

std::string StorePath(std::string_view programFolder, std::string_view configFolder, std::string_view stem,
                      std::string_view extension) {
  const std::string_view folder = CanWriteFolder(programFolder) ? programFolder : configFolder;
  return WithSeparator(folder) + std::string(stem) + std::string(extension);
}

std::string StorePath(std::string_view extension) {
  return StorePath(ProgramFolder(), ConfigFolder(), ProgramStem(), extension);
}

std::string PathBesideProgram(std::string_view extension) {
  return WithSeparator(ProgramFolder()) + ProgramStem() + std::string(extension);
}

bool IsListed(std::string_view path) {
  const std::string_view name = FileNameOf(path);
  const std::string_view folder = path.substr(0, path.size() - name.size());
  std::error_code error;
  fs::directory_iterator entry(folder.empty() ? fs::path(".") : PathOf(folder), error);
  const fs::path wanted = PathOf(name);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    if (entry->path().filename() == wanted) return true;
  }
  return false;
}

std::optional<LoadFault> LoadAtStart(Session& session, std::string_view iniFile,
                                     const std::function<std::string()>& openPath) {
  if (IsListed(iniFile)) return LoadSettings(session, iniFile);
  session.settings.TargetPath = openPath();
  session.window.ShowField("TargetPath");
  session.settings.EhoSens = 0;
  session.window.ShowField("EhoSens");
  return std::nullopt;
}

bool SaveSettings(Session& session, std::string_view iniFile) {
  try {
    EndLink(session.link);
    std::vector<IniValue> values;
    values.reserve(std::size(SavedKeys));
    for (const std::string_view key : SavedKeys) values.push_back({key, ValueOf(session, key)});
    return IWriteAll(iniFile, IniSection, values);
  } catch (...) {
    return false;
  }
}

}  // namespace sondrix
