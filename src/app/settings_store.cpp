#include "app/settings_store.h"

#include "app/ini_file.h"
#include "core/fault.h"
#include "core/files.h"
#include "platform/platform.h"

#include <filesystem>
#include <vector>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

// Within a kind the fields are written in the order of their table.
constexpr FieldKind WritingOrder[] = {FieldKind::Text, FieldKind::Contrast, FieldKind::Flag,
                                      FieldKind::Channel, FieldKind::Language};

std::vector<IniValue> ValuesOf(const Session& session) {
  std::vector<IniValue> values;
  for (const FieldKind kind : WritingOrder) {
    for (const Field& field : Fields()) {
      if (field.kind != kind || field.key.empty()) continue;
      const bool isChannel = kind == FieldKind::Channel;
      values.push_back({field.key, isChannel ? std::to_string(ChannelByte(session.state.SelectedChannel))
                                             : FieldText(session.settings, field)});
    }
  }
  return values;
}

void EndLink(OziLink& link) {
  if (!link.IsOpen) return;
  link.IsOpen = false;
  link.CloseApi();
}

}  // namespace

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

bool WriteSettings(const Session& session, std::string_view iniFile) {
  return IWriteAll(iniFile, IniSection, ValuesOf(session));
}

bool SaveSettings(Session& session, std::string_view iniFile) {
  try {
    EndLink(session.link);
    return WriteSettings(session, iniFile);
  } catch (...) {
    return false;
  }
}

}  // namespace sondrix
