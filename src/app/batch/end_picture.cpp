#include "app/batch/end_picture.h"

#include "app/session.h"
#include "core/files.h"
#include "core/window.h"

namespace sondrix {

std::optional<Fault> SaveEndPicture(Session& session, const std::string& source) {
  const Settings& settings = session.settings;
  const bool isEchogram = source.ends_with(".sl2") || source.ends_with(".sl3");
  const bool failed = session.window.Att().starts_with(" ! ");
  if (!isEchogram || failed || !settings.MakeGraf || session.state.KnownSamples == 0) return std::nullopt;
  const std::string_view file = FileNameOf(source);
  const std::string name =
      settings.TargetName.empty() ? std::string(file.substr(0, file.rfind('.'))) : settings.TargetName;
  const std::string suffix = "_ch" + std::to_string(ChannelByte(session.state.SelectedChannel)) + ".bmp";
  try {
    SaveGraph(session.pictures, settings.TargetPath + name + suffix);
  } catch (...) {
    return CaughtFault();
  }
  return std::nullopt;
}

}  // namespace sondrix
