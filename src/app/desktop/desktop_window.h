#pragma once

#include "app/desktop/dialogs.h"
#include "app/desktop/toolkit_texts.h"
#include "app/session.h"
#include "app/start.h"
#include "core/window.h"

#include <QMainWindow>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

class QEventLoop;
class QTimer;

namespace sondrix {

class PictureView;
class RunPanel;
enum class Channel : std::uint8_t;

// The program's window: every control is found by its name. All of a run happens inside a click, and only at
// its pumps and waits other events come through.
class DesktopWindow final : public QMainWindow, public Window {
 public:
  // helpFile: where the help button writes its text.
  DesktopWindow(std::string programFolder, std::string helpFile);

  // The start behind the building. The settings are kept in facts.iniFile at the closing.
  void Start(const StartFacts& facts);
  // As if the user had typed a path into Source.
  void SetSource(const std::string& path);

  // Lines over the pictures, until a run begins, the sketch changes or others come; none takes them away.
  void ShowNotes(const std::vector<std::string>& notes);
  // Greys the options of channels that the source lacks, which can be chosen all the same.
  void MarkChannels(std::vector<Channel> missing);

  Session& TheSession() { return session_; }
  DesktopServices services;

  void SetAtt(std::string_view text, LineKind kind = LineKind::Progress) override {
    att_ = text;
    attKind_ = kind;
  }
  std::string_view Att() const override { return att_; }
  LineKind AttKind() const override { return attKind_; }
  void RepaintAtt() override;
  void SetSpd(std::string_view text) override { spd_ = text; }
  std::string_view Spd() const override { return spd_; }
  void ShowField(std::string_view name) override;
  void SetEnabled(std::string_view control, bool enabled) override;
  bool IsEnabled(std::string_view control) const override;
  void SetCaption(std::string_view control, std::string_view text) override;
  void SetBusy(bool busy) override;
  void Pump() override;
  void Wait(int milliseconds) override;
  bool IsToEnd() const override;
  void Beep() override { services.beep(); }
  bool Ask(std::string_view text, std::string_view title) override;
  void Inform(std::string_view text, std::string_view title) override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  using Clock = std::chrono::steady_clock;

  // desktop_window.cpp
  void Build();
  void ShowAll();
  void ShowCaptions();
  void ShowChannelMarks();
  void EndWait();
  void ArrangeNeedles();
  void LeaveFocus(const QWidget* control);
  void ReturnFocus();

  // window_events.cpp
  void ConnectFields();
  void ConnectButtons();
  void ConnectMenus();
  void ConnectShortcuts();
  void ConnectField(const Field& field);
  // Does what a click asks for, reports its fault under a place, and shows what it changed.
  void Act(const char* place, const std::function<void()>& click);
  void EditText(const Field& field, const std::string& text);
  void TakeMounting();
  void TellOfSource();
  void DrawSketch();
  void ChooseItem(int index);
  void ToggleTrack();
  void ToggleWidth();
  void SaveScreen();
  void ShowHelpText();
  void OpenOutputs();
  void SavePicture();
  QWidget* Find(std::string_view name) const;

  ToolkitTexts toolkitTexts_;
  Session session_;
  std::string programFolder_, helpFile_, iniFile_;
  std::map<std::string, QWidget*, std::less<>> controls_;
  RunPanel* runPanel_ = nullptr;
  QWidget* settingsPanel_ = nullptr;
  PictureView *course_ = nullptr, *heading_ = nullptr;
  std::vector<Channel> missingChannels_;
  QTimer* sourceTimer_ = nullptr;  // from a change of the source to the look at it
  std::string att_, spd_, shownAtt_, shownSpd_;
  LineKind attKind_ = LineKind::Progress;
  Clock::time_point shownAt_;
  QEventLoop* wait_ = nullptr;      // while a run waits
  QWidget* focusBefore_ = nullptr;  // what had the focus when a run disabled it
  bool hasStarted_ = false;
  bool showsSketch_ = false;
};

}  // namespace sondrix
