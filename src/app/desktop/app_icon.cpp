#include "app/desktop/app_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPolygonF>

namespace sondrix {
namespace {

constexpr int Sizes[] = {16, 24, 32, 48, 64, 128, 256};
constexpr double Grid = 64;  // the drawing's own units

QPixmap Draw(int size) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / Grid, size / Grid);
  painter.setPen(Qt::NoPen);

  QPainterPath frame;
  frame.addRoundedRect(2, 2, 60, 60, 10, 10);
  painter.setClipPath(frame);
  painter.fillRect(QRectF(0, 0, 64, 24), QColor(0xE8, 0xF2, 0xF8));
  painter.fillRect(QRectF(0, 24, 64, 40), QColor(0x1F, 0x5F, 0x94));

  painter.setBrush(QColor(0x6F, 0xB4, 0xDC));
  painter.drawPolygon(QPolygonF({{32, 24}, {12, 52}, {52, 52}}));
  QPainterPath bottom(QPointF(0, 64));
  bottom.lineTo(0, 50);
  bottom.cubicTo(16, 40, 26, 58, 40, 48);
  bottom.cubicTo(50, 42, 58, 46, 64, 44);
  bottom.lineTo(64, 64);
  painter.setBrush(QColor(0x6B, 0x4A, 0x2B));
  painter.drawPath(bottom);
  painter.setBrush(QColor(0xC8, 0x32, 0x28));
  painter.drawPolygon(QPolygonF({{10, 16}, {56, 16}, {46, 28}, {18, 28}}));
  return pixmap;
}

}  // namespace

QIcon AppIcon() {
  QIcon icon;
  for (const int size : Sizes) icon.addPixmap(Draw(size));
  return icon;
}

}  // namespace sondrix
