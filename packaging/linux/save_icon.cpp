// Saves the window's icon as a PNG. Usage: save-icon SIZE FILE
#include "app/desktop/app_icon.h"

#include <QGuiApplication>
#include <QPixmap>

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  if (argc != 3) return 2;
  const int size = QByteArray(argv[1]).toInt();
  return sondrix::AppIcon().pixmap(size).save(QString::fromLocal8Bit(argv[2]), "PNG") ? 0 : 1;
}
