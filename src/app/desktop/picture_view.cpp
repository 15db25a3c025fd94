#include "app/desktop/picture_view.h"

#include "app/desktop/qt_text.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

namespace sondrix {
namespace {

constexpr int TextPixels = 10;

QColor ColourOf(Colour colour) {
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

void PaintText(QPainter& painter, const Picture& picture, const PictureText& text, double scale) {
  const QFontMetricsF metrics(painter.font(), painter.device());
  QString shown = QtText(text.text);
  while (shown.endsWith(QLatin1Char(' '))) shown.chop(1);
  const double x =
      picture.TextX(static_cast<double>(text.x), metrics.horizontalAdvance(shown) * scale, scale) / scale;
  painter.setPen(ColourOf(text.colour));
  painter.drawText(QPointF(x, static_cast<double>(text.y) / scale + metrics.ascent()), shown);
}

}  // namespace

PictureView::PictureView(const Picture& picture, std::function<void()> refresh, QWidget* parent)
    : QWidget(parent), picture_(picture), refresh_(std::move(refresh)) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  // The texts of the sketch and of the depths have little room beside what they name.
  QFont small = font();
  small.setPixelSize(TextPixels);
  setFont(small);
}

void PictureView::ShowChange() {
  if (picture_.Version() != shown_) update();
}

void PictureView::paintEvent(QPaintEvent*) {
  refresh_();
  shown_ = picture_.Version();
  const double scale = devicePixelRatioF();
  const QImage raster(reinterpret_cast<const uchar*>(picture_.Row(0)), picture_.Width(), picture_.Height(),
                      static_cast<qsizetype>(picture_.Stride()) * 4, QImage::Format_RGBX8888);
  QPainter painter(this);
  // A device size that was rounded down leaves a margin.
  if (picture_.Width() < width() * scale || picture_.Height() < height() * scale) {
    painter.fillRect(rect(), Qt::white);
  }
  painter.scale(1 / scale, 1 / scale);
  painter.drawImage(0, 0, raster);
  painter.resetTransform();
  for (const PictureText& text : picture_.Texts()) PaintText(painter, picture_, text, scale);
}

}  // namespace sondrix
