#pragma once

#include <QPixmap>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QLabel;

namespace sondrix {

class LogLine;
class PictureView;
struct Pictures;

// The left half of the window: the pictures, the log line, and the row of buttons. It gives the pictures
// rasters of device pixels as it grows and shrinks.
class RunPanel : public QWidget {
 public:
  RunPanel(Pictures& pictures, QWidget* parent);

  // Called after the pictures have got another size.
  std::function<void()> onResized;

  // Asks for repaints of what has changed.
  void ShowChanges();
  // Lines of text over echogram and curve, an entry a line, wrapped; none takes them away.
  void ShowNotes(const std::vector<std::string>& notes);
  // The three panels as they stand on the screen, without the notes, in device pixels.
  QPixmap Graph();
  // Lays out again after a move to a screen of another density.
  void Arrange();

  LogLine* att;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  Pictures& pictures_;
  PictureView *echo_, *smpl_, *metr_;
  QLabel* notes_;

  void PlaceNotes();
};

}  // namespace sondrix
