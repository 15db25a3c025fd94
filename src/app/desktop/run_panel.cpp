#include "app/desktop/run_panel.h"

#include "app/desktop/log_line.h"
#include "app/desktop/picture_view.h"
#include "app/desktop/qt_text.h"
#include "core/settings.h"
#include "echo/views.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace sondrix {
namespace {

// Pixels, in the window's first size. The panels overlap by the column of their edges.
constexpr int Left = 3, Top = 5;
constexpr int SmplWidth = 152, MetrWidth = 26;
constexpr int FirstWidth = 410;
constexpr int RightMargin = 4;
constexpr int BelowPictures = 55;  // from the pictures' foot to the window's
constexpr int AttAbove = 50, ButtonsAbove = 24;
constexpr int AttHeight = 22, HelpWidth = 35;
constexpr int HighAttAbove = 54, HighAttHeight = 29;  // the log line with two rows
constexpr int SpdWidth = 74, SpdHeight = 18;
constexpr int SmplShare = 4;  // SMPL takes this part of the extra width
constexpr int ContrastStep = 10;
constexpr int NotesInset = 6, NotesMargin = 5;

struct ButtonPlace {
  const char* name;
  int left, width;
};
constexpr int ButtonHeight = 22;
constexpr ButtonPlace Buttons[] = {{"btnGO", 4, 44},      {"RunSet", 50, 30}, {"RunEnd", 82, 30},
                                   {"MakeScrn", 274, 32}, {"WPT", 308, 34},   {"WPF", 344, 34},
                                   {"FrmSize", 380, 27}};
constexpr int ContrastLabelLeft = 116, ContrastLabelWidth = 58, ContrastLeft = 177, ContrastWidth = 93;

QPushButton* AddButton(QWidget* parent, const char* name) {
  auto* button = new QPushButton(parent);
  button->setObjectName(QLatin1String(name));
  return button;
}

}  // namespace

RunPanel::RunPanel(Pictures& pictures, QWidget* parent) : QWidget(parent), pictures_(pictures) {
  const auto addView = [&](const Picture& picture, const char* name) {
    auto* view = new PictureView(
        picture, [this] { Refresh(pictures_); }, this);
    view->setObjectName(QLatin1String(name));
    return view;
  };
  // The echogram lies over the curve's first column, so that its newest column is seen.
  smpl_ = addView(pictures.SMPL, "SMPL");
  echo_ = addView(pictures.ECHO, "ECHO");
  metr_ = addView(pictures.METR, "METR");

  notes_ = new QLabel(this);
  notes_->setObjectName(QLatin1String("Notes"));
  notes_->setTextFormat(Qt::PlainText);
  notes_->setWordWrap(true);
  notes_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  notes_->setFrameShape(QFrame::Box);
  notes_->setMargin(NotesMargin);
  notes_->setAutoFillBackground(true);
  notes_->setAttribute(Qt::WA_TransparentForMouseEvents);
  notes_->hide();

  auto* speed = new QLineEdit(this);
  speed->setObjectName(QLatin1String("SPD"));
  speed->setReadOnly(true);
  speed->setFrame(false);
  speed->setFocusPolicy(Qt::NoFocus);
  speed->setAcceptDrops(false);
  QPalette onPicture = speed->palette();
  onPicture.setColor(QPalette::Base, Qt::white);
  onPicture.setColor(QPalette::Text, Qt::black);
  speed->setPalette(onPicture);
  onPicture.setColor(QPalette::Window, Qt::white);
  onPicture.setColor(QPalette::WindowText, Qt::black);
  notes_->setPalette(onPicture);

  for (const ButtonPlace& place : Buttons) AddButton(this, place.name);
  auto* label = new QLabel(this);
  label->setObjectName(QLatin1String("lblEhoSens"));
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->resize(ContrastLabelWidth, ButtonHeight);
  auto* contrast = new QScrollBar(Qt::Horizontal, this);
  contrast->setObjectName(QLatin1String("EhoSens"));
  contrast->setRange(MinEhoSens, MaxEhoSens);
  contrast->setPageStep(ContrastStep);
  contrast->setFocusPolicy(Qt::StrongFocus);

  att = new LogLine(this);
  att->setObjectName(QLatin1String("Att"));
  AddButton(this, "btnHelp");
}

void RunPanel::resizeEvent(QResizeEvent*) { Arrange(); }

void RunPanel::Arrange() {
  const int pictureHeight = height() - Top - BelowPictures;
  const int smplWidth = SmplWidth + (width() - FirstWidth) / SmplShare;
  const int echoWidth = width() - Left - RightMargin - MetrWidth - smplWidth + 2;
  if (pictureHeight < 1 || smplWidth < 1 || echoWidth < 1) return;
  echo_->setGeometry(Left, Top, echoWidth, pictureHeight);
  smpl_->setGeometry(echo_->geometry().right(), Top, smplWidth, pictureHeight);
  metr_->setGeometry(smpl_->geometry().right(), Top, MetrWidth, pictureHeight);
  const double scale = devicePixelRatioF();
  const auto device = [scale](int pixels) { return static_cast<int>(std::lround(pixels * scale)); };
  ResizeViews(pictures_, device(echoWidth), device(smplWidth), device(MetrWidth), device(pictureHeight));

  const auto place = [this](const char* name, int left, int y, int itsWidth, int itsHeight) {
    findChild<QWidget*>(QLatin1String(name))->setGeometry(left, y, itsWidth, itsHeight);
  };
  place("SPD", smpl_->x() + 2, Top + pictureHeight - SpdHeight, SpdWidth, SpdHeight);
  PlaceNotes();
  const int attWidth = width() - Left - HelpWidth - RightMargin - 2;
  att->SetPlaces({Left, height() - AttAbove, attWidth, AttHeight},
                 {Left, height() - HighAttAbove, attWidth, HighAttHeight});
  place("btnHelp", Left + attWidth + 2, height() - AttAbove, HelpWidth, AttHeight);
  const int y = height() - ButtonsAbove;
  for (const ButtonPlace& button : Buttons) place(button.name, button.left, y, button.width, ButtonHeight);
  place("lblEhoSens", ContrastLabelLeft, y, ContrastLabelWidth, ButtonHeight);
  place("EhoSens", ContrastLeft, y + 3, ContrastWidth, ButtonHeight - 6);
  if (onResized) onResized();
}

void RunPanel::ShowChanges() {
  Refresh(pictures_);
  for (PictureView* view : {echo_, smpl_, metr_}) view->ShowChange();
}

void RunPanel::ShowNotes(const std::vector<std::string>& notes) {
  QStringList lines;
  for (const std::string& note : notes) lines << QtText(note);
  notes_->setText(lines.join(QLatin1Char('\n')));
  PlaceNotes();
  notes_->setVisible(!lines.isEmpty());
}

// As high as its text, at the top of the pictures.
void RunPanel::PlaceNotes() {
  const QRect room = (echo_->geometry() | smpl_->geometry()).adjusted(NotesInset, NotesInset, -NotesInset, 0);
  const int wanted = notes_->heightForWidth(room.width());
  notes_->setGeometry(room.x(), room.y(), room.width(), std::min(wanted, room.height() - NotesInset));
}

QPixmap RunPanel::Graph() {
  const bool hasNotes = notes_->isVisible();
  notes_->hide();
  const QPixmap graph = grab(echo_->geometry() | smpl_->geometry() | metr_->geometry());
  notes_->setVisible(hasNotes);
  return graph;
}

}  // namespace sondrix
