#pragma once

#include "app/file_choice.h"

#include <functional>
#include <string>

class QWidget;

namespace sondrix {

// What the window asks of the desktop; tests replace it.
struct DesktopServices {
  FileDialogs files;
  // A Yes/No question; an information.
  std::function<bool(const std::string& text, const std::string& title)> ask;
  std::function<void(const std::string& text, const std::string& title)> inform;
  // The path for a picture to be saved; empty after a cancel.
  std::function<std::string(const std::string& suggested)> askPicture;
  std::function<void()> beep;
};

// The toolkit's dialogs over a parent, which has to outlive them.
DesktopServices ToolkitServices(QWidget* parent);

}  // namespace sondrix
