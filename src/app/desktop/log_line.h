#pragma once

#include <QLineEdit>
#include <QRect>
#include <string_view>

namespace sondrix {

// The percentage that a line of progress tells: the digits before its first "%"; -1 where there is none.
int PercentIn(std::string_view line);

// The log line: a line of text, faults in red, and during a run a slim bar of its progress at the foot. A
// text that its room doesn't hold stands in two rows in a higher room, its middle left out if it is longer
// still; a selection shows it in one row that scrolls. The tip holds it all.
class LogLine : public QLineEdit {
 public:
  explicit LogLine(QWidget* parent);

  // Its place with a text of one row, and with one of two.
  void SetPlaces(const QRect& one, const QRect& two);
  void ShowLine(std::string_view line, bool isFault = false);
  // Without a run there is no bar.
  void SetRunning(bool running);
  int Percent() const { return percent_; }  // of the bar; -1 for none
  bool IsWhole() const;                     // whether all of the text is seen

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Fit();
  void PaintTwoRows();

  QRect one_, two_;
  QStringList rows_;  // two, of a text that one doesn't hold
  bool isRunning_ = false;
  bool isFault_ = false;
  bool isCut_ = false;  // the middle is left out
  int percent_ = -1;
};

}  // namespace sondrix
