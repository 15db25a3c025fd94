#pragma once

#include "echo/picture.h"

#include <QWidget>
#include <cstdint>
#include <functional>

namespace sondrix {

// Shows a picture: its raster device pixel by device pixel, its texts in the widget's font. The picture
// outlives the view.
class PictureView : public QWidget {
 public:
  // refresh brings the picture up to date; called before each look at it.
  PictureView(const Picture& picture, std::function<void()> refresh, QWidget* parent);

  // Asks for a repaint if the picture has changed since the last one.
  void ShowChange();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Picture& picture_;
  std::function<void()> refresh_;
  std::uint64_t shown_ = 0;  // version of the picture
};

}  // namespace sondrix
