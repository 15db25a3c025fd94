#include "app/batch/batch.h"

#include "app/batch/batch_window.h"
#include "app/batch/convert.h"
#include "app/batch/options.h"
#include "app/batch/source_list.h"
#include "app/batch/transcript.h"
#include "app/command_line.h"
#include "app/edit_field.h"
#include "app/exit_status.h"
#include "app/ini_file.h"
#include "app/interrupt.h"
#include "app/load_settings.h"
#include "app/session.h"
#include "app/settings_store.h"
#include "core/fault.h"
#include "core/files.h"
#include "platform/platform.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>

namespace sondrix {
namespace {

void Complain(std::string_view text) { sondrix::Complain(BatchProgram, text); }

void PrintFields() {
  const auto print = [](std::string_view name, std::string_view value, std::string_view meaning) {
    std::printf("%-10.*s  %-7.*s  %.*s\n", static_cast<int>(name.size()), name.data(),
                static_cast<int>(value.size()), value.data(), static_cast<int>(meaning.size()),
                meaning.data());
  };
  print("FIELD", "DEFAULT", "MEANING");
  for (const Field& field : Fields()) print(field.name, field.defaultText, field.meaning);
}

// Each of these returns what is wrong, as a text for the user.

std::optional<std::string> LoadIni(Session& session, const std::string& iniFile) {
  try {
    if (std::cmp_greater(InputFile(iniFile).Length(), MaxIniLength))
      return iniFile + ": too large for a settings file";
  } catch (const Fault& fault) {
    return iniFile + ": " + std::string(fault.Description());
  }
  const auto fault = LoadSettings(session, iniFile);
  if (!fault) return std::nullopt;
  return iniFile + ": " + std::string(fault->key) + ": " + std::to_string(fault->fault.Number()) + ". " +
         std::string(fault->fault.Description());
}

// The separator behind a folder makes the click create the folder itself.
std::string AsFolder(std::string path) {
  const bool isBareDrive = PathSeparator == '\\' && path.size() == 2 && path[1] == ':';
  return isBareDrive ? path : WithSeparator(path);
}

std::optional<std::string> ApplyEdit(Session& session, const FieldEdit& edit) {
  switch (EditField(session, edit.name, edit.value)) {
    case EditResult::NoField:
      return "there is no field " + Quoted(edit.name) + "; --list-fields shows them all";
    case EditResult::BadValue:
      return edit.name + " takes " + std::string(AllowedValues(*FindField(edit.name))) + ", not " +
             Quoted(edit.value);
    case EditResult::Disabled:
      Complain(edit.name + " is disabled while MakeGraf is clear: ignored");
      return std::nullopt;
    case EditResult::Done:
      return std::nullopt;
  }
  return std::nullopt;
}

std::optional<std::string> ApplyOptions(Session& session, BatchOptions& options) {
  if (!options.iniFile.empty()) {
    if (auto wrong = LoadIni(session, options.iniFile)) return wrong;
  }
  if (options.targetPath) EditField(session, "TargetPath", AsFolder(*options.targetPath));
  bool editsSource = false;
  for (const FieldEdit& edit : options.edits) {
    if (auto wrong = ApplyEdit(session, edit)) return wrong;
    if (edit.name == "Source") editsSource = true;
  }
  const std::string& edited = session.settings.Source;
  if (options.sources.empty() && editsSource && !edited.empty()) options.sources = {edited};
  if (options.sources.empty() && options.writeIni.empty()) return "no source is given; --help tells how";
  return std::nullopt;
}

// The settings as the options leave them. Returns what is wrong.
std::optional<std::string> WriteIni(const Session& session, const BatchOptions& options) {
  const std::string& file = options.writeIni;
  const auto isFile = [id = KnownIdOf(file)](const std::string& source) {
    return id && KnownIdOf(source) == id;
  };
  if (std::any_of(options.sources.begin(), options.sources.end(), isFile)) return file + ": is a source";
  if (!WriteSettings(session, file)) return file + ": the settings couldn't be written";
  return std::nullopt;
}

int ParseAndConvert(std::span<const std::string> arguments) {
  ParsedOptions parsed = ParseOptions(arguments);
  if (parsed.exitStatus) return EndBefore(BatchProgram, *parsed.exitStatus, parsed.text);
  BatchOptions& options = parsed.options;
  if (options.listFields) {
    PrintFields();
    return ExitWell;
  }

  Transcript transcript(false);
  BatchWindow window({}, transcript);
  Session session(window);
  ApplyLanguage(session, LangEnglish);
  if (const auto wrong = ApplyOptions(session, options)) {
    Complain(*wrong);
    return ExitUsage;
  }
  // What an edit was refused for, as a map program that can't be reached.
  if (window.AttKind() == LineKind::Fault) Complain(window.Att());
  if (!options.writeIni.empty()) {
    if (const auto wrong = WriteIni(session, options)) {
      Complain(*wrong);
      return ExitFailed;
    }
  }

  const InterruptGuard guard;
  const SourceList list = ListSources(options.sources, session.settings, options.recursive);
  for (const std::string& note : list.notes) Complain(note);
  for (const std::string& folder : list.emptyFolders) Complain(folder + ": nothing in it can be converted");
  const bool allWell = ConvertAll(session, options, list.sources) && list.emptyFolders.empty();
  if (session.link.IsOpen) session.link.CloseApi();
  return allWell && !Interrupted() ? ExitWell : ExitFailed;
}

}  // namespace

int RunBatch(std::span<const std::string> arguments) {
  return EndBehind(BatchProgram, ParseAndConvert(arguments));
}

}  // namespace sondrix
