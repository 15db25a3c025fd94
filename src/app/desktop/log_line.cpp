#include "app/desktop/log_line.h"

#include "app/desktop/qt_text.h"

#include <QFontMetricsF>
#include <QPaintEvent>
#include <QPainter>
#include <charconv>

namespace sondrix {
namespace {

constexpr int BarHeight = 3;
constexpr int BarInset = 2;
constexpr int TextMargins = 12;    // both sides together
constexpr int NarrowStretch = 85;  // percent

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

int PercentOf(std::string_view line) {
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

void LogLine::ShowLine(std::string_view line) {
  const QString text = QtText(line);
  NarrowFor(text);
  setText(text);
  setCursorPosition(0);
  if (const bool isFault = line.starts_with(" ! "); isFault != isFault_) {
    isFault_ = isFault;
    QPalette colours;
    if (isFault) colours.setColor(QPalette::Text, QColor(0xB0, 0x10, 0x10));
    setPalette(colours);
  }
  // A line without a percentage leaves the bar where it is.
  if (const int percent = PercentOf(line); isRunning_ && percent >= 0) percent_ = percent;
}

// A line that is too long for its room has narrower letters; a tip shows all of one that still is.
void LogLine::NarrowFor(const QString& text) {
  const int room = width() - TextMargins;
  QFont letters = font();
  letters.setStretch(QFont::Unstretched);
  const bool isLong = QFontMetricsF(letters).horizontalAdvance(text) > room;
  if (isLong) letters.setStretch(NarrowStretch);
  if (letters != font()) setFont(letters);
  setToolTip(isLong && QFontMetricsF(letters).horizontalAdvance(text) > room ? text : QString());
}

void LogLine::SetRunning(bool running) {
  isRunning_ = running;
  percent_ = running ? 0 : -1;
  update();
}

void LogLine::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  if (percent_ <= 0) return;
  const int room = width() - 2 * BarInset;
  QPainter painter(this);
  painter.fillRect(BarInset, height() - BarInset - BarHeight, room * percent_ / 100, BarHeight,
                   palette().color(QPalette::Highlight));
}

}  // namespace sondrix
