#include "app/desktop/desktop_window.h"
#include "app/desktop/qt_text.h"
#include "app/file_choice.h"
#include "app/settings_store.h"
#include "platform/platform.h"

#include <QApplication>

using namespace sondrix;

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QLatin1String("Sondrix"));
  QApplication::setApplicationVersion(QLatin1String(SONDRIX_VERSION));
  const SingleInstance instance(ProgramStem());
  if (!instance.IsFirst()) return 0;

  DesktopWindow window(ProgramFolder(), StorePath(".txt"));
  window.Start({StorePath(".ini"), InterfaceLanguage(), [&window] { return OpenPath(window); }});
  // A file that is opened with the program.
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() == 2) window.SetSource(Utf8Of(arguments[1]));
  window.show();
  return QApplication::exec();
}
