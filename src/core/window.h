#pragma once

#include <string>
#include <string_view>

namespace sondrix {

// Progress begins with a blank, a notice or the end of a run with " * ", a fault or a refusal with " ! ".
enum class LineKind { Progress, Notice, Fault };

// What logic asks of the window. The fields themselves are in Settings, which a window keeps up to date.
// Controls, fields and captions are named by the names of their records ("btnGO", "TargetName").
class Window {
 public:
  virtual ~Window() = default;

  // The log line: one line, each report replaces it. Set many times a frame, shown at the pace of the eye.
  virtual void SetAtt(std::string_view text, LineKind kind = LineKind::Progress) = 0;
  virtual std::string_view Att() const = 0;
  virtual LineKind AttKind() const = 0;
  // Shows the log line now, as far as the window's pace allows.
  virtual void RepaintAtt() = 0;

  // The speed beside the pictures.
  virtual void SetSpd(std::string_view text) = 0;
  virtual std::string_view Spd() const = 0;

  // A field of Settings was changed by logic and is to be shown.
  virtual void ShowField(std::string_view field) = 0;
  virtual void SetEnabled(std::string_view control, bool enabled) = 0;
  virtual bool IsEnabled(std::string_view control) const = 0;
  virtual void SetCaption(std::string_view control, std::string_view text) = 0;
  // The mouse pointer: hourglass or normal.
  virtual void SetBusy(bool busy) = 0;

  // Handles what is pending: clicks, keys, repaints. Called several times a frame, so it has to be cheap.
  virtual void Pump() = 0;
  // A wait for the eye or for the user. A window without an eye returns at once; one with events ends it
  // early when the user acts.
  virtual void Wait(int milliseconds) = 0;
  // Whether the program itself is to end, which a run obeys between two pumps too. Cheap.
  virtual bool IsToEnd() const = 0;
  virtual void Beep() = 0;

  // A Yes/No question; true for Yes.
  virtual bool Ask(std::string_view text, std::string_view title) = 0;
  // An information box with an OK button.
  virtual void Inform(std::string_view text, std::string_view title) = 0;
};

}  // namespace sondrix
