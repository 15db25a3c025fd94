#include "app/desktop/fit_label.h"

#include <QFontMetricsF>

namespace sondrix {
namespace {

constexpr int SmallestPixels = 9;
constexpr int NarrowestStretch = 80;  // percent
constexpr int StretchStep = 4;

}  // namespace

bool FitsRoom(const QLabel* label) {
  return QFontMetricsF(label->font()).horizontalAdvance(label->text()) <= label->contentsRect().width();
}

void FitLabel(QLabel* label) {
  QFont font = label->font();
  for (int pixels = LetterPixels; pixels >= SmallestPixels; --pixels) {
    for (int stretch = 100; stretch >= NarrowestStretch; stretch -= StretchStep) {
      font.setPixelSize(pixels);
      font.setStretch(stretch);
      label->setFont(font);
      if (FitsRoom(label)) return;
    }
  }
}

}  // namespace sondrix
