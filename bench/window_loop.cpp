// The real window, without a screen, again and again, for the tests that kill it and that let it run for
// long.
//   window-loop close FOLDER          opens and closes windows until it is killed; the settings turn from one
//                                     of two states to the other at each closing
//   window-loop close FOLDER COUNT    the same so many times
//   window-loop convert FOLDER COUNT SOURCE...    clicks in one window, the sources in turn; each line is
//                                     the number of runs, KB of memory in use, open handles, objects of the
//                                     toolkit
// Exit status: 0 all went well, 1 a run didn't, 2 wrong usage.

#include "app/desktop/desktop_window.h"
#include "app/language.h"
#include "core/files.h"

#include <QApplication>
#include <QPushButton>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

using namespace sondrix;
namespace fs = std::filesystem;

constexpr int LinesOfConvert = 100;
constexpr std::size_t LongValue = 200;

void Open(DesktopWindow& window, const std::string& folder) {
  window.Start({folder + "/sondrix.ini", LangEnglish, [] { return std::string(); }, ""});
  window.show();
  QApplication::processEvents();
}

int CloseAgain(const std::string& folder, int count) {
  for (int i = 0; count == 0 || i < count; ++i) {
    DesktopWindow window(folder, folder + "/help.txt");
    Open(window, folder);
    Settings& settings = window.TheSession().settings;
    settings.Source = settings.TargetPath = settings.TargetName =
        std::string(LongValue, i % 2 == 0 ? 'a' : 'b');
    if (!window.close()) return 1;
  }
  return 0;
}

long MemoryKb() {
  long size = 0, resident = 0;  // pages
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident * sysconf(_SC_PAGESIZE) / 1024;
}

int ConvertAgain(const std::string& folder, int count, std::span<char* const> sources) {
  DesktopWindow window(folder, folder + "/help.txt");
  Open(window, folder);
  window.services.beep = [] {};
  for (int i = 1; i <= count; ++i) {
    Session& session = window.TheSession();
    session.settings.TargetPath = folder + "/";
    session.state.DefectPause = 0;  // nobody looks
    window.SetSource(sources[static_cast<std::size_t>(i) % sources.size()]);
    window.findChild<QPushButton*>(QLatin1String("btnGO"))->click();
    if (window.Att().starts_with(" ! ") || window.Att().empty()) {
      std::printf("%s: %s\n", session.settings.Source.c_str(), std::string(window.Att()).c_str());
      return 1;
    }
    if (i % LinesOfConvert != 0) continue;
    const auto handles = std::distance(fs::directory_iterator("/proc/self/fd"), {});
    std::printf("%d %ld %d %d\n", i, MemoryKb(), static_cast<int>(handles),
                static_cast<int>(window.findChildren<QObject*>().size()));
    std::fflush(stdout);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const std::span arguments(argv, static_cast<std::size_t>(argc));
  const std::string mode = argc > 2 ? argv[1] : "";
  const int count = argc > 3 ? std::atoi(argv[3]) : 0;
  if (mode == "close") return CloseAgain(argv[2], count);
  if (mode == "convert" && argc > 4) return ConvertAgain(argv[2], count, arguments.subspan(4));
  return 2;
}
