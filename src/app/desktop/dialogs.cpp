#include "app/desktop/dialogs.h"

#include "app/desktop/qt_text.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStringList>
#include <QUrl>

namespace sondrix {
namespace {

// As the toolkit lists an entry: "description (*.a *.A)"; some of its dialogs compare with case.
QString FilterText(const FileFilter& filter) {
  QStringList patterns;
  for (const QString& pattern : QtText(filter.patterns).split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
    patterns << pattern.toLower() << pattern;
  }
  patterns.removeDuplicates();
  return QtText(filter.description) + QLatin1String(" (") + patterns.join(QLatin1Char(' ')) +
         QLatin1Char(')');
}

std::string AskFile(QWidget* parent, const std::string& initial, const std::vector<FileFilter>& filters,
                    const std::string& title) {
  QStringList entries;
  for (const FileFilter& filter : filters) entries << FilterText(filter);
  QFileDialog dialog(parent, QtText(title), QtText(initial), entries.join(QLatin1String(";;")));
  dialog.setFileMode(QFileDialog::AnyFile);  // a run tells of a file that isn't there
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return Utf8Of(QDir::toNativeSeparators(dialog.selectedFiles().front()));
}

std::optional<std::string> AskFolder(QWidget* parent, const std::string& start, const std::string& title) {
  const QString path = QFileDialog::getExistingDirectory(parent, QtText(title), QtText(start));
  if (path.isEmpty()) return std::nullopt;
  return Utf8Of(QDir::toNativeSeparators(path));
}

std::string AskPicture(QWidget* parent, const std::string& suggested) {
  const QString path = QFileDialog::getSaveFileName(parent, QString(), QtText(suggested),
                                                    QLatin1String("PNG (*.png);;BMP (*.bmp)"));
  return Utf8Of(path);
}

}  // namespace

DesktopServices ToolkitServices(QWidget* parent) {
  DesktopServices services;
  services.files.askFile = [parent](const std::string& initial, const std::vector<FileFilter>& filters,
                                    const std::string& title) {
    return AskFile(parent, initial, filters, title);
  };
  services.files.askFolder = [parent](const std::string& start, const std::string& title) {
    return AskFolder(parent, start, title);
  };
  services.files.shellOpen = [](const std::string& path) {
    if (!QFileInfo::exists(QtText(path))) return 0;  // its writing has been reported
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QtText(path))) ? 0 : NoAssociation;
  };
  services.ask = [parent](const std::string& text, const std::string& title) {
    return QMessageBox::question(parent, QtText(title), QtText(text)) == QMessageBox::Yes;
  };
  services.inform = [parent](const std::string& text, const std::string& title) {
    QMessageBox::information(parent, QtText(title), QtText(text));
  };
  services.askPicture = [parent](const std::string& suggested) { return AskPicture(parent, suggested); };
  services.beep = [] { QApplication::beep(); };
  return services;
}

}  // namespace sondrix
