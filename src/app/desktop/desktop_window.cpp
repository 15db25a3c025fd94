#include "app/desktop/desktop_window.h"

#include "app/captions.h"
#include "app/desktop/app_icon.h"
#include "app/desktop/fit_label.h"
#include "app/desktop/log_line.h"
#include "app/desktop/menu_texts.h"
#include "app/desktop/picture_view.h"
#include "app/desktop/qt_text.h"
#include "app/desktop/run_panel.h"
#include "app/desktop/settings_panel.h"
#include "app/interrupt.h"
#include "core/channel.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <cmath>

namespace sondrix {
namespace {

constexpr int FirstWidth = SettingsLeft + SettingsWidth, FirstHeight = 480;
constexpr auto ShowPace = std::chrono::milliseconds(16);

void ResizeNeedle(Picture& picture, double scale) {
  const auto size = static_cast<int>(std::lround(40 * scale));
  picture.Resize(size, size);
}

}  // namespace

DesktopWindow::DesktopWindow(std::string programFolder, std::string helpFile)
    : services(ToolkitServices(this)),
      session_(*this),
      programFolder_(std::move(programFolder)),
      helpFile_(std::move(helpFile)) {
  setWindowTitle(QLatin1String("Sondrix"));
  setWindowIcon(AppIcon());
  setAcceptDrops(true);
  Build();
  ConnectFields();
  ConnectButtons();
  ConnectMenus();
  ConnectShortcuts();
  session_.langId = LangOfBuilding;
  ShowCaptions();
  session_.langId = 0;
  for (const FixedCaption& caption : FixedCaptions) SetCaption(caption.element, caption.text);
  for (const Field& field : Fields()) ShowField(field.name);
  for (const char* name : {"RunSet", "RunEnd"}) SetEnabled(name, false);
}

void DesktopWindow::Build() {
  auto* centre = new QWidget(this);
  // Places are given in pixels, and so is the height of the letters.
  QFont font = centre->font();
  font.setPixelSize(LetterPixels);
  centre->setFont(font);
  auto* layout = new QHBoxLayout(centre);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  runPanel_ = new RunPanel(session_.pictures, centre);
  runPanel_->setMinimumSize(SettingsLeft, FirstHeight);
  settingsPanel_ = BuildSettingsPanel(centre);
  settingsPanel_->setFixedWidth(SettingsWidth);
  layout->addWidget(runPanel_, 1);
  layout->addWidget(settingsPanel_);
  BuildHiddenFlags(centre);
  const auto addNeedle = [this](const Picture& picture, const char* name, const QRect& place) {
    auto* view = new PictureView(
        picture, [] {}, settingsPanel_);
    view->setObjectName(QLatin1String(name));
    view->setGeometry(place);
    return view;
  };
  course_ = addNeedle(session_.pictures.CRS, "CRS", CourseRect());
  heading_ = addNeedle(session_.pictures.HED, "HED", HeadingRect());
  setCentralWidget(centre);
  resize(FirstWidth, FirstHeight);

  for (QWidget* widget : centre->findChildren<QWidget*>()) {
    if (!widget->objectName().isEmpty()) controls_.emplace(Utf8Of(widget->objectName()), widget);
  }
  runPanel_->onResized = [this] {
    ArrangeNeedles();
    if (showsSketch_) DrawSketch();
  };
  // The tabulator visits the settings first, then the run's half.
  QWidget* last = nullptr;
  for (const QWidget* half : {settingsPanel_, static_cast<QWidget*>(runPanel_)}) {
    for (QWidget* widget : half->findChildren<QWidget*>()) {
      if (!controls_.contains(Utf8Of(widget->objectName())) || !(widget->focusPolicy() & Qt::TabFocus)) {
        continue;
      }
      if (last) setTabOrder(last, widget);
      last = widget;
    }
  }
  Find("Source")->setFocus();
}

void DesktopWindow::ArrangeNeedles() {
  const double scale = devicePixelRatioF();
  ResizeNeedle(session_.pictures.CRS, scale);
  ResizeNeedle(session_.pictures.HED, scale);
}

void DesktopWindow::Start(const StartFacts& facts) {
  iniFile_ = facts.iniFile;
  if (StartSession(session_, facts)) ShowCaptions();
  hasStarted_ = true;
  TakeMounting();
  ShowAll();
}

QWidget* DesktopWindow::Find(std::string_view name) const {
  const auto found = controls_.find(name);
  return found == controls_.end() ? nullptr : found->second;
}

void DesktopWindow::ShowCaptions() {
  if (HintHelpOf(session_.langId).empty()) return;  // a language without a table leaves all as it is
  toolkitTexts_.SetLanguage(session_.langId);
  for (const CaptionRow& row : CaptionRows()) {
    const std::string_view text = TextOf(row, session_.langId);
    QWidget* widget = Find(row.element);
    if (!widget) continue;
    if (row.kind == CaptionKind::Tip) {
      widget->setToolTip(QtText(text));
    } else if (!text.empty()) {
      SetCaption(row.element, text);
    }
  }
  ShowChannelMarks();
}

void DesktopWindow::ShowNotes(const std::vector<std::string>& notes) { runPanel_->ShowNotes(notes); }

void DesktopWindow::MarkChannels(std::vector<Channel> missing) {
  missingChannels_ = std::move(missing);
  ShowChannelMarks();
}

void DesktopWindow::ShowChannelMarks() {
  for (const ChannelRow& row : Channels) {
    QWidget* option = Find("UseTyp" + std::to_string(ChannelByte(row.channel)));
    const bool isMissing = std::ranges::count(missingChannels_, row.channel) > 0;
    QPalette colours;
    if (isMissing) {
      colours.setColor(QPalette::WindowText, palette().color(QPalette::Disabled, QPalette::WindowText));
    }
    option->setPalette(colours);
    option->setToolTip(isMissing ? QtText(MenuTextsOf(session_.langId).notInSource) : QString());
  }
}

void DesktopWindow::SetCaption(std::string_view control, std::string_view text) {
  QWidget* widget = Find(control);
  if (auto* label = dynamic_cast<QLabel*>(widget)) {
    label->setText(QtText(text));
    FitLabel(label);
  } else if (auto* button = dynamic_cast<QAbstractButton*>(widget)) {
    button->setText(QtText(text));
  }
}

void DesktopWindow::ShowField(std::string_view name) {
  const Field* field = FindField(name);
  if (!field) return;
  const Settings& settings = session_.settings;
  QWidget* widget = Find(name);
  if (!widget) return;
  switch (field->kind) {
    case FieldKind::Text:
      if (auto* edit = static_cast<QLineEdit*>(widget); Utf8Of(edit->text()) != settings.*field->text) {
        edit->setText(QtText(settings.*field->text));
      }
      break;
    case FieldKind::Flag:
      static_cast<QCheckBox*>(widget)->setChecked(settings.*field->flag);
      break;
    case FieldKind::Contrast:
      static_cast<QScrollBar*>(widget)->setValue(settings.*field->number);
      break;
    case FieldKind::Channel:
      static_cast<QRadioButton*>(Find("UseTyp" + std::to_string(settings.*field->number)))->setChecked(true);
      break;
    case FieldKind::Language: {
      auto* items = static_cast<QComboBox*>(widget);
      items->setCurrentIndex(items->findText(QtText(settings.*field->text)));
      break;
    }
  }
}

void DesktopWindow::SetEnabled(std::string_view control, bool enabled) {
  if (control == "RunSet") {
    runPanel_->att->SetRunning(enabled);
    if (enabled) {
      showsSketch_ = false;
      ShowNotes({});
    }
  }
  QWidget* widget = Find(control);
  if (!widget || widget->isEnabled() == enabled) return;
  if (!enabled) LeaveFocus(widget);
  widget->setEnabled(enabled);
  if (control == "btnGO" && enabled) ReturnFocus();
  shownAt_ = {};  // the next pump shows it, and what the user may click now works from there on
}

// The toolkit would hand the focus to whatever comes next, and the user's next key would change that.
void DesktopWindow::LeaveFocus(const QWidget* control) {
  QWidget* const focused = focusWidget();
  if (!focused || (focused != control && !control->isAncestorOf(focused))) return;
  if (!focusBefore_) focusBefore_ = focused;
  centralWidget()->setFocus();
}

// Unless the user has gone elsewhere during the run.
void DesktopWindow::ReturnFocus() {
  QWidget* const before = std::exchange(focusBefore_, nullptr);
  if (before && focusWidget() == centralWidget()) before->setFocus();
}

bool DesktopWindow::IsEnabled(std::string_view control) const {
  const QWidget* widget = Find(control);
  return widget && widget->isEnabled();
}

void DesktopWindow::SetBusy(bool busy) {
  if (busy) {
    setCursor(Qt::BusyCursor);
  } else {
    unsetCursor();
  }
}

void DesktopWindow::ShowAll() {
  if (att_ != shownAtt_) {
    shownAtt_ = att_;
    runPanel_->att->ShowLine(att_, attKind_ == LineKind::Fault);
  }
  if (spd_ != shownSpd_) {
    shownSpd_ = spd_;
    static_cast<QLineEdit*>(Find("SPD"))->setText(QtText(spd_));
  }
  runPanel_->ShowChanges();
  course_->ShowChange();
  heading_->ShowChange();
}

void DesktopWindow::RepaintAtt() { Pump(); }

void DesktopWindow::Pump() {
  if (Clock::now() - shownAt_ < ShowPace) return;
  ShowAll();
  QCoreApplication::processEvents();
  // The pace counts from the end, so that a slow screen leaves time for the run.
  shownAt_ = Clock::now();
}

void DesktopWindow::Wait(int milliseconds) {
  if (milliseconds <= 0) return Pump();
  ShowAll();
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  QEventLoop* const outer = std::exchange(wait_, &loop);
  loop.exec();
  wait_ = outer;
}

bool DesktopWindow::IsToEnd() const { return Interrupted(); }

void DesktopWindow::EndWait() {
  if (wait_) wait_->quit();
}

bool DesktopWindow::Ask(std::string_view text, std::string_view title) {
  ShowAll();
  return services.ask(std::string(text), std::string(title));
}

void DesktopWindow::Inform(std::string_view text, std::string_view title) {
  ShowAll();
  services.inform(std::string(text), std::string(title));
}

}  // namespace sondrix
