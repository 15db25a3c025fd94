#include "app/captions.h"
#include "app/desktop/desktop_window.h"
#include "app/desktop/event_hook.h"
#include "app/desktop/qt_text.h"
#include "app/desktop/run_panel.h"
#include "app/edit_field.h"
#include "app/empty_result.h"
#include "app/settings_store.h"
#include "app/source_notes.h"
#include "core/channel.h"
#include "core/fault.h"
#include "jobs/clicks.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>
#include <QUrl>
#include <QWindow>
#include <chrono>

namespace sondrix {
namespace {

constexpr std::chrono::milliseconds SourcePause{200};  // in typing, before the source is looked at

// What a click on a label beside a box does: the label acts as a part of it.
void JoinLabel(QWidget* label, QCheckBox* box) {
  label->installEventFilter(new EventHook(box, [box, label](QObject*, QEvent* event) {
    if (event->type() != QEvent::MouseButtonRelease) return false;
    const auto* release = static_cast<QMouseEvent*>(event);
    if (release->button() == Qt::LeftButton && label->rect().contains(release->position().toPoint()))
      box->click();
    return false;
  }));
}

// The path of the one local file that is dragged; empty for anything else.
QString DraggedFile(const QDropEvent& event) {
  const QList<QUrl> urls = event.mimeData()->urls();
  return urls.size() == 1 ? QDir::toNativeSeparators(urls.front().toLocalFile()) : QString();
}

}  // namespace

void DesktopWindow::Act(const char* place, const std::function<void()>& click) {
  try {
    click();
  } catch (...) {
    const Fault fault = CaughtFault();
    Beep();
    SetAtt(FaultLine(place, fault), LineKind::Fault);
  }
  ShowAll();
}

void DesktopWindow::ConnectField(const Field& field) {
  QWidget* widget = Find(field.name);
  if (!widget) return;
  switch (field.kind) {
    case FieldKind::Text:
      connect(static_cast<QLineEdit*>(widget), &QLineEdit::textChanged, this,
              [this, &field](const QString& text) { EditText(field, Utf8Of(text)); });
      break;
    case FieldKind::Flag: {
      auto* box = static_cast<QCheckBox*>(widget);
      connect(box, &QCheckBox::clicked, this, [this, &field](bool value) {
        Act("GO", [&] { SetFlag(session_, field, value); });
        ShowField(field.name);
      });
      if (QWidget* label = Find("lbl" + std::string(field.name))) JoinLabel(label, box);
      break;
    }
    case FieldKind::Contrast:
      connect(static_cast<QScrollBar*>(widget), &QScrollBar::valueChanged, this,
              [this, &field](int value) { session_.settings.*field.number = value; });
      break;
    case FieldKind::Channel:
      for (const ChannelRow& row : Channels) {
        auto* option = static_cast<QRadioButton*>(Find("UseTyp" + std::to_string(ChannelByte(row.channel))));
        // The tabulator comes to the chosen option, not to the first one.
        option->setFocusPolicy(Qt::ClickFocus);
        connect(option, &QRadioButton::toggled, option, [option](bool isChosen) {
          option->setFocusPolicy(isChosen ? Qt::StrongFocus : Qt::ClickFocus);
        });
        connect(option, &QRadioButton::clicked, this, [this, &field, channel = ChannelByte(row.channel)] {
          EditField(session_, field.name, std::to_string(channel));
        });
      }
      break;
    case FieldKind::Language:
      connect(static_cast<QComboBox*>(widget), &QComboBox::activated, this,
              [this](int index) { ChooseItem(index); });
      break;
  }
}

// A run tells of its source itself.
void DesktopWindow::TellOfSource() {
  if (!IsEnabled("btnGO")) return;
  SourceNotes notes = NotesOn(session_.settings.Source, session_.langId);
  ShowNotes(notes.lines);
  MarkChannels(std::move(notes.missing));
}

void DesktopWindow::ConnectFields() {
  sourceTimer_ = new QTimer(this);
  sourceTimer_->setSingleShot(true);
  connect(sourceTimer_, &QTimer::timeout, this, &DesktopWindow::TellOfSource);
  for (const Field& field : Fields()) ConnectField(field);
  Find("lblCrsHed")->installEventFilter(new EventHook(this, [this](QObject*, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick) Act("GO", [this] { ToggleTrack(); });
    return false;
  }));
}

void DesktopWindow::EditText(const Field& field, const std::string& text) {
  session_.settings.*field.text = text;
  if (field.text == &Settings::Source && hasStarted_) sourceTimer_->start(SourcePause);
  const bool isMounting = field.text == &Settings::DucerX || field.text == &Settings::DucerY;
  if (isMounting && hasStarted_) Act("GO", [this] { TakeMounting(); });
}

void DesktopWindow::ConnectButtons() {
  Run& run = session_.run;
  const auto onClick = [this](const char* name, const char* place, std::function<void()> click) {
    connect(static_cast<QPushButton*>(Find(name)), &QPushButton::clicked, this,
            [this, place, click = std::move(click)] { Act(place, click); });
  };
  onClick("btnGO", "GO", [this, &run] {
    const std::string source = session_.settings.Source;  // another may be picked during a text job
    const RunResult result = GoClick(run);
    ShowNotes(WhyEmpty(result, session_.settings, source, session_.langId));
  });
  onClick("RunSet", "GO", [this, &run] {
    PauseClick(run);
    EndWait();
  });
  onClick("RunEnd", "GO", [this, &run] {
    StopClick(run);
    EndWait();
  });
  onClick("WPT", "GO", [&run] { MarkClick(run, MarkRelief); });
  onClick("WPF", "GO", [&run] { MarkClick(run, MarkFish); });
  onClick("MakeScrn", "MakeScrn", [this] { SaveScreen(); });
  onClick("FrmSize", "FrmSize", [this] { ToggleWidth(); });
  onClick("btnHelp", "btnHelp_Click", [this] { ShowHelpText(); });
  onClick("btnSource", "Source", [this] { SourceClick(session_, services.files); });
  onClick("btnTargetPath", "TargetPath",
          [this] { TargetPathClick(session_, services.files, programFolder_); });
}

void DesktopWindow::ConnectShortcuts() {
  const auto add = [this](const QKeySequence& keys, auto&& act) {
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this, act);
    return shortcut;
  };
  // The button takes the click only where it is enabled.
  const auto click = [this](const char* name) {
    return [button = static_cast<QPushButton*>(Find(name))] { button->click(); };
  };
  add(Qt::CTRL | Qt::Key_Q, [this] { close(); });
  add(Qt::Key_F1, click("btnHelp"));
  add(Qt::Key_F5, click("btnGO"));
  // Outside a run these keys are for whatever has the focus; during one they are for the run alone, from the
  // wait on in which its buttons are still disabled.
  // cppcheck-suppress constVariable ; it is
  QShortcut* const ofRun[] = {add(Qt::Key_Space, click("RunSet")), add(Qt::Key_Escape, [this] {
                                Act("GO", [this] { StopClick(session_.run); });
                                EndWait();
                              })};
  for (QShortcut* shortcut : ofRun) {
    shortcut->setEnabled(false);
    QWidget* const start = Find("btnGO");
    start->installEventFilter(new EventHook(shortcut, [shortcut, start](QObject*, QEvent* event) {
      if (event->type() == QEvent::EnabledChange) shortcut->setEnabled(!start->isEnabled());
      return false;
    }));
  }
  qApp->installEventFilter(new EventHook(this, [this](QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride || IsEnabled("btnGO")) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isOfRun =
        key->modifiers() == Qt::NoModifier && (key->key() == Qt::Key_Space || key->key() == Qt::Key_Escape);
    const auto* widget = qobject_cast<const QWidget*>(watched);
    if (!isOfRun || !widget || widget->window() != this) return false;
    event->ignore();  // a text field would take a blank as typed
    return true;
  }));
}

void DesktopWindow::SetSource(const std::string& path) {
  EditField(session_, "Source", path);
  ShowAll();
}

void DesktopWindow::closeEvent(QCloseEvent* event) {
  if (!CloseClick(session_.run)) {
    EndWait();
    event->ignore();
    return;
  }
  if (!iniFile_.empty()) SaveSettings(session_, iniFile_);
  event->accept();
}

void DesktopWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  runPanel_->Arrange();
  connect(windowHandle(), &QWindow::screenChanged, runPanel_, &RunPanel::Arrange, Qt::UniqueConnection);
}

void DesktopWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (IsEnabled("Source") && !DraggedFile(*event).isEmpty()) event->acceptProposedAction();
}

void DesktopWindow::dropEvent(QDropEvent* event) {
  const QString file = DraggedFile(*event);
  if (!IsEnabled("Source") || file.isEmpty()) return;
  SetSource(Utf8Of(file));
  event->acceptProposedAction();
}

}  // namespace sondrix
