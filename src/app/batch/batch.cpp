#include "app/batch/batch.h"

#include "app/batch/batch_window.h"
#include "app/batch/end_picture.h"
#include "app/batch/exit_status.h"
#include "app/batch/options.h"
#include "app/batch/output_clash.h"
#include "app/edit_field.h"
#include "app/ini_file.h"
#include "app/interrupt.h"
#include "app/load_settings.h"
#include "app/session.h"
#include "core/fault.h"
#include "core/files.h"
#include "core/run_result.h"
#include "jobs/clicks.h"
#include "platform/platform.h"

#include <cstdio>
#include <optional>
#include <string>
#include <utility>

namespace sondrix {
namespace {

void Complain(const std::string& text) { PutText(stderr, "sondrix-batch: " + text + "\n"); }

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

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
  if (options.sources.empty()) return "no source is given; --help tells how";
  return std::nullopt;
}

std::string_view ShownName(const std::string& source) {
  const std::string_view name = FileNameOf(source);
  return name.empty() ? std::string_view(source) : name;
}

void RefuseSource(BatchWindow& window, const std::string& source, const Clash& clash) {
  window.BeginSource(ShownName(source));
  window.SetAtt(
      clash.overwrites
          ? " ! its output " + Quoted(clash.path) + " would overwrite the source " + Quoted(clash.other)
          : " ! " + Quoted(clash.other) + " would write the same output " + Quoted(clash.path),
      LineKind::Fault);
  window.EndSource();
}

bool ConvertSource(Session& session, BatchWindow& window, const std::string& source) {
  EditField(session, "Source", source);
  window.BeginSource(ShownName(source));
  RunResult result = GoClick(session.run);
  // A click that ended early keeps a name that was meant for this source only.
  if (session.state.AutoName) session.settings.TargetName.clear();
  session.state.AutoName = false;
  window.EndSource();
  SaveEndPicture(session, source, result);
  // The line tells of one, unless a later report took its place.
  if (!result.lost.empty() && window.AttKind() != LineKind::Fault) {
    const Fault& fault = result.lost.back();
    Complain(source + ": " + LostLine(fault) + ": " + fault.Path());
  }
  return result.IsWell() && !Interrupted();
}

int ParseAndConvert(std::span<const std::string> arguments) {
  ParsedOptions parsed = ParseOptions(arguments);
  if (parsed.exitStatus == ExitUsage) {
    Complain(parsed.text);
    return ExitUsage;
  }
  if (parsed.exitStatus) {
    PutText(stdout, parsed.text);
    return *parsed.exitStatus;
  }
  BatchOptions& options = parsed.options;
  if (options.listFields) {
    PrintFields();
    return ExitWell;
  }

  BatchWindow window(options.verbose, options.answer);
  Session session(window);
  ApplyLanguage(session, LangEnglish);
  if (const auto wrong = ApplyOptions(session, options)) {
    Complain(*wrong);
    return ExitUsage;
  }
  // What an edit was refused for, as a map program that can't be reached.
  if (window.AttKind() == LineKind::Fault) Complain(std::string(window.Att()));

  const InterruptGuard guard;
  window.SetRun(&session.run);
  bool allWell = true;
  const std::vector<std::optional<Clash>> clashes = OutputClashes(session.settings, options.sources);
  for (std::size_t i = 0; i < options.sources.size() && !Interrupted(); ++i) {
    if (clashes[i]) RefuseSource(window, options.sources[i], *clashes[i]);
    if (clashes[i] || !ConvertSource(session, window, options.sources[i])) allWell = false;
  }
  if (session.link.IsOpen) session.link.CloseApi();
  return allWell && !Interrupted() ? ExitWell : ExitFailed;
}

}  // namespace

int RunBatch(std::span<const std::string> arguments) {
  const int status = ParseAndConvert(arguments);
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
  Complain("what was printed is lost: standard output takes no more");
  return status == ExitWell ? ExitFailed : status;
}

}  // namespace sondrix
