#include "app/desktop/log_line.h"

#include "app/desktop/fit_label.h"
#include "app/desktop/qt_text.h"
#include "core/text.h"

#include <QFontMetricsF>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTextLayout>
#include <algorithm>
#include <charconv>

namespace sondrix {
namespace {

constexpr int BarHeight = 3;
constexpr int BarInset = 2;
constexpr int TextMargins = 12;      // both sides together
constexpr int NarrowStretch = 85;    // percent
constexpr int SmallestPixels = 9;    // of the letters in two rows
constexpr int SmallestStretch = 80;  // percent
constexpr int StretchStep = 5;
constexpr int Rows = 2;

// The text in rows of a width, broken at blanks where there are any.
QStringList RowsOf(const QString& text, const QFont& letters, int width) {
  QTextLayout layout(text, letters);
  QTextOption breaks;
  breaks.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(breaks);
  QStringList rows;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    rows << text.mid(line.textStart(), line.textLength());
    if (rows.size() > Rows) break;
  }
  layout.endLayout();
  return rows;
}

}  // namespace

int PercentIn(std::string_view line) {
  const std::size_t end = line.find('%');
  if (end == std::string_view::npos) return -1;
  std::size_t start = end;
  while (start > 0 && IsDigit(line[start - 1])) --start;
  int percent = -1;
  std::from_chars(line.data() + start, line.data() + end, percent);
  return percent > 100 ? -1 : percent;
}

LogLine::LogLine(QWidget* parent) : QLineEdit(parent) {
  setReadOnly(true);
  setAcceptDrops(false);
}

void LogLine::ShowLine(std::string_view line, bool isFault) {
  setText(QtText(line));
  setCursorPosition(0);
  Fit();
  if (isFault != isFault_) {
    isFault_ = isFault;
    QPalette colours;
    if (isFault) colours.setColor(QPalette::Text, QColor(0xB0, 0x10, 0x10));
    setPalette(colours);
  }
  // A line without a percentage leaves the bar where it is.
  if (const int percent = PercentIn(line); isRunning_ && percent >= 0) percent_ = percent;
}

void LogLine::SetPlaces(const QRect& one, const QRect& two) {
  one_ = one;
  two_ = two;
  Fit();
}

// Narrower letters first, then two rows, then smaller ones.
void LogLine::Fit() {
  const QString shown = text();
  const int room = one_.width() - TextMargins;
  setToolTip(shown);
  rows_.clear();
  isCut_ = false;
  QFont letters = font();
  letters.setPixelSize(LetterPixels);
  for (const int stretch : {int{QFont::Unstretched}, NarrowStretch}) {
    letters.setStretch(stretch);
    if (QFontMetricsF(letters).horizontalAdvance(shown) <= room) break;
  }
  if (QFontMetricsF(letters).horizontalAdvance(shown) > room) {
    for (int pixels = LetterPixels; pixels >= SmallestPixels && rows_.size() != Rows; --pixels) {
      for (int stretch = 100; stretch >= SmallestStretch && rows_.size() != Rows; stretch -= StretchStep) {
        letters.setPixelSize(pixels);
        letters.setStretch(stretch);
        rows_ = RowsOf(shown, letters, room);
      }
    }
    isCut_ = rows_.size() > Rows;
    if (isCut_) {
      const QFontMetricsF metrics(letters);
      for (double share = Rows; rows_.size() > Rows && share > 1; share -= 0.1) {
        rows_ = RowsOf(metrics.elidedText(shown, Qt::ElideMiddle, share * room), letters, room);
      }
    }
  }
  if (letters != font()) setFont(letters);
  // During a run a line that has grown stays so: it may be shown sixty times a second.
  const bool isHigh = !rows_.isEmpty() || (isRunning_ && geometry() == two_);
  setGeometry(isHigh ? two_ : one_);
  update();
}

void LogLine::SetRunning(bool running) {
  isRunning_ = running;
  percent_ = running ? 0 : -1;
  update();
}

void LogLine::PaintTwoRows() {
  QStyleOptionFrame frame;
  initStyleOption(&frame);
  QPainter painter(this);
  style()->drawPrimitive(QStyle::PE_PanelLineEdit, &frame, &painter, this);
  painter.setPen(palette().color(QPalette::Text));
  const QFontMetricsF metrics(font(), this);
  const double pitch = std::min(metrics.height(), static_cast<double>(height()) / Rows - 1);
  double y = (height() - Rows * pitch) / 2;
  for (const QString& row : rows_) {
    painter.drawText(QPointF(TextMargins / 2.0, y + (pitch - metrics.height()) / 2 + metrics.ascent()), row);
    y += pitch;
  }
}

bool LogLine::IsWhole() const { return !isCut_; }

void LogLine::paintEvent(QPaintEvent* event) {
  if (rows_.isEmpty() || hasSelectedText()) {
    QLineEdit::paintEvent(event);
  } else {
    PaintTwoRows();
  }
  if (percent_ <= 0) return;
  const int room = width() - 2 * BarInset;
  QPainter painter(this);
  painter.fillRect(BarInset, height() - BarInset - BarHeight, room * percent_ / 100, BarHeight,
                   palette().color(QPalette::Highlight));
}

}  // namespace sondrix
