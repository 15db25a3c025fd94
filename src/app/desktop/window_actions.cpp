#include "app/captions.h"
#include "app/desktop/desktop_window.h"
#include "app/desktop/log_line.h"
#include "app/desktop/menu_texts.h"
#include "app/desktop/qt_text.h"
#include "app/desktop/run_panel.h"
#include "app/desktop/settings_panel.h"
#include "app/edit_field.h"
#include "app/help_text.h"
#include "app/settings_store.h"
#include "core/date_time.h"
#include "core/fault.h"
#include "core/files.h"
#include "core/number_text.h"
#include "echo/views.h"
#include "platform/platform.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <cmath>

namespace sondrix {
namespace {

constexpr double CentimetresPerMetre = 100;

float MetresOf(const std::string& text) {
  if (!IsNumeric(text)) return 0;
  const auto metres = static_cast<float>(LocParse(text) / CentimetresPerMetre);
  return std::isfinite(metres) ? metres : 0;  // a start of a run reports such a number
}

}  // namespace

void DesktopWindow::TakeMounting() {
  session_.limits.DucerXM = MetresOf(session_.settings.DucerX);
  session_.limits.DucerYM = MetresOf(session_.settings.DucerY);
  ShowNotes({});
  DrawSketch();
}

void DesktopWindow::DrawSketch() {
  DrawMounting(session_.pictures, session_.limits.DucerXM, session_.limits.DucerYM, session_.messages);
  showsSketch_ = true;
}

void DesktopWindow::ChooseItem(int index) {
  const auto* items = static_cast<QComboBox*>(Find("boxLang"));
  EditField(session_, "boxLang", Utf8Of(items->itemText(index)));
  ShowCaptions();
  SetAtt(HintHelpOf(session_.langId), LineKind::Notice);
  if (showsSketch_) DrawSketch();
  ShowAll();
}

void DesktopWindow::ToggleTrack() {
  bool& flag = session_.settings.UseRad;
  flag = !flag;
  ShowField("UseRad");
  auto* label = Find("lblCrsHed");
  QPalette colours = label->palette();
  colours.setColor(QPalette::WindowText, palette().color(flag ? QPalette::Highlight : QPalette::ButtonText));
  label->setPalette(colours);
  if (flag) {
    Beep();
    SetAtt(" ! " + Utf8Of(static_cast<QLabel*>(Find("lblUseRad"))->text()), LineKind::Fault);
  } else {
    SetAtt("");
  }
}

void DesktopWindow::ToggleWidth() {
  const bool narrow = settingsPanel_->isVisible();
  // Reckoned before the panel's room is taken or given by the layout.
  const int wanted = width() + (narrow ? -SettingsWidth : SettingsWidth);
  settingsPanel_->setVisible(!narrow);
  SetCaption("FrmSize", narrow ? ">>" : "<<");
  centralWidget()->layout()->activate();
  layout()->activate();
  if (!isMaximized() && !isFullScreen()) resize(wanted, height());
}

void DesktopWindow::SaveScreen() {
  std::string time = ClockTime(ClockNow());
  std::erase(time, ':');
  SaveGraph(session_.pictures, session_.outputs, session_.settings.TargetPath + time + ".bmp");
}

void DesktopWindow::ShowHelpText() {
  HelpReport report;
  report.systemVersion = SystemVersion();
  report.systemLanguage = SystemLanguage();
  report.userLanguage = InterfaceLanguage();
  report.font = Utf8Of(Find("lblDepthSm")->font().family());
  report.characterSet = CharacterSetOf(session_.langId);
  ShowHelp(session_, helpFile_, report, services.files);
}

void DesktopWindow::OpenOutputs() {
  const std::string& target = session_.settings.TargetPath;
  ShellOpen(services.files, *this, target.empty() ? "." : target);
}

void DesktopWindow::SavePicture() {
  const QPixmap graph = runPanel_->Graph();
  const std::string folder = WithSeparator(session_.settings.TargetPath);
  const std::string path = services.askPicture(folder + "sondrix.png");
  if (path.empty()) return;
  session_.outputs.Guard(path);
  if (!graph.save(QtText(path))) throw Fault(FaultNumber::PathAccess);
}

void DesktopWindow::ConnectMenus() {
  // A menu that is only popped up leaves a run going.
  const auto popUp = [this](QMenu* menu, QWidget* over, const QPoint& at, bool isPicture) {
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const MenuTexts& texts = MenuTextsOf(session_.langId);
    const auto add = [&](const char* text, const char* place, std::function<void()> click) {
      connect(menu->addAction(QtText(text)), &QAction::triggered, this,
              [this, place, click = std::move(click)] { Act(place, click); });
    };
    if (isPicture) {
      add(texts.copyPicture, "Clipboard",
          [this] { QGuiApplication::clipboard()->setPixmap(runPanel_->Graph()); });
      add(texts.savePicture, "SaveGraph", [this] { SavePicture(); });
    }
    menu->addSeparator();
    add(texts.openFolder, "TargetPath", [this] { OpenOutputs(); });
    menu->popup(over->mapToGlobal(at));
  };
  for (const char* name : {"ECHO", "SMPL", "METR", "Att"}) {
    QWidget* widget = Find(name);
    widget->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(widget, &QWidget::customContextMenuRequested, this, [this, popUp, widget](const QPoint& at) {
      const bool isLine = widget == runPanel_->att;
      popUp(isLine ? runPanel_->att->createStandardContextMenu() : new QMenu(widget), widget, at, !isLine);
    });
  }
}

}  // namespace sondrix
