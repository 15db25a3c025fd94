#include "app/desktop/desktop_window.h"
#include "app/desktop/qt_text.h"
#include "app/file_choice.h"
#include "app/interrupt.h"
#include "app/settings_store.h"
#include "platform/platform.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTimer>

using namespace sondrix;

namespace {

// The user's documents, or the home folder where there are none.
std::string UserFolder() {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return Utf8Of(QDir::toNativeSeparators(QFileInfo(documents).isDir() ? documents : QDir::homePath()));
}

constexpr int SignalPace = 250;  // ms between two looks

// A signal closes a dialog, then the window, as the user would: a run is stopped first.
void CloseWhenAsked(QWidget& window) {
  if (!Interrupted()) return;
  QWidget* const dialog = QApplication::activeModalWidget();
  (dialog ? dialog : &window)->close();
}

}  // namespace

int main(int argc, char** argv) {
  PrepareProcess();
  QApplication application(argc, argv);
  QApplication::setApplicationName(QLatin1String("Sondrix"));
  QApplication::setApplicationVersion(QLatin1String(SONDRIX_VERSION));
  QApplication::setDesktopFileName(QLatin1String("sondrix"));
  const SingleInstance instance(ProgramStem());
  if (!instance.IsFirst()) return 0;

  const std::string outputFolder = OutputFolder(ProgramFolder(), UserFolder());
  DesktopWindow window(outputFolder, StorePath(".txt"));
  window.Start({StorePath(".ini"), InterfaceLanguage(), [&] { return OpenPath(window, outputFolder); },
                PathBesideProgram(".ini")});
  // A file that is opened with the program.
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() == 2) {
    // Whole, since the settings keep it for a start from another folder.
    const QString path = QFileInfo(arguments[1]).absoluteFilePath();
    window.SetSource(Utf8Of(QDir::toNativeSeparators(path)));
  }
  window.show();
  const InterruptGuard guard;
  QTimer signalTimer;
  QObject::connect(&signalTimer, &QTimer::timeout, &window, [&window] { CloseWhenAsked(window); });
  signalTimer.start(SignalPace);
  return QApplication::exec();
}
