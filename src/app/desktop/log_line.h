#pragma once

#include <QLineEdit>
#include <string_view>

namespace sondrix {

// The percentage that a line of progress tells: the digits before its first "%"; -1 where there is none.
int PercentOf(std::string_view line);

// The log line: one line of text, faults in red, and during a run a slim bar of its progress at the foot.
class LogLine : public QLineEdit {
 public:
  explicit LogLine(QWidget* parent);

  void ShowLine(std::string_view line);
  // Without a run there is no bar.
  void SetRunning(bool running);
  int Percent() const { return percent_; }  // of the bar; -1 for none

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void NarrowFor(const QString& text);

  bool isRunning_ = false;
  bool isFault_ = false;
  int percent_ = -1;
};

}  // namespace sondrix
