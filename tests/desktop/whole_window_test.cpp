#include "app/desktop/app_icon.h"
#include "app/desktop/picture_view.h"
#include "digest.h"
#include "window_run.h"

#include <QScrollBar>

namespace sondrix {
namespace {

// A line for each control in the order of the tabulator: place, state, texts, and what its kind has. What
// letters decide about is left out, and the log line and the speed of a run.
std::string Described(const QWidget* window, const std::string& folder, bool isRunning) {
  std::ostringstream text;
  const QWidget* widget = window;
  do {
    const std::string name = Utf8Of(widget->objectName());
    const QRect place = name == "Notes" || name == "Att" ? QRect() : widget->geometry();
    text << name << ' ' << widget->isVisible() << widget->isEnabled() << widget->acceptDrops()
         << widget->focusPolicy() << widget->contextMenuPolicy()
         << widget->testAttribute(Qt::WA_TransparentForMouseEvents);
    const auto group = widget->isEnabled() ? QPalette::Active : QPalette::Disabled;
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::Base})
      text << (widget->palette().color(role) == QApplication::palette().color(group, role));
    if (!isRunning || (name != "Att" && name != "SPD")) {
      for (const int number : {place.x(), place.y(), place.width(), place.height()}) text << ' ' << number;
      for (const char* number : {"textFormat", "alignment", "readOnly", "frame", "frameShape", "margin",
                                 "wordWrap", "minimum", "maximum", "pageStep", "value", "checked", "count"})
        text << ' ' << widget->property(number).toInt();
      for (const char* property : {"toolTip", "text", "currentText"}) {
        const std::string value = Utf8Of(widget->property(property).toString());
        if (!value.starts_with(folder)) text << '|' << value;
      }
    }
    text << '\n';
    widget = widget->nextInFocusChain();
  } while (widget != window);
  return text.str();
}

TEST_F(WindowTest, StandsAsItStood) {
  std::string whole;
  const auto note = [&] {
    whole += Described(window.get(), folder.string(), !Find("btnGO")->isEnabled());
    const Pictures& pictures = window->TheSession().pictures;
    for (const Picture* one : {&pictures.ECHO, &pictures.SMPL, &pictures.METR, &pictures.CRS, &pictures.HED})
      whole += std::to_string(one->Width()) + " " + std::to_string(one->Height()) + "\n";
  };
  note();
  Click("FrmSize");
  note();
  window->resize(700, 300);
  Click("FrmSize");
  note();
  ChooseLanguage(2);
  QTest::mouseDClick(Find("lblCrsHed"), Qt::LeftButton);
  Click("UseTyp9");
  window->MarkChannels({Channel::Primary});
  note();
  ChooseLanguage(0);
  RunWith({[&] { Click("RunSet"); }, note,
           [&] {
             Find<QScrollBar>("EhoSens")->setValue(-60);
             Click("FrmSize");
             note();
           },
           [&] { Click("RunSet"); }});
  note();
  EXPECT_TRUE(HasDigest(whole + Utf8Of(window->windowTitle()), 0xF0AC252B68BC3C8B));
}

// By the highest bits of its colours, so that the smoothing of edges hardly counts.
TEST(AppIcon, IsDrawnAsItWas) {
  const QImage image = AppIcon().pixmap(QSize(256, 256), 1.0).toImage();
  std::string all = std::to_string(AppIcon().availableSizes().size());
  for (int y = 1; y < image.height(); y += 3)
    for (int x = 1; x < image.width(); x += 3) all += std::to_string(image.pixel(x, y) & 0xC0C0C0C0) + ' ';
  EXPECT_TRUE(HasDigest(all, 0xB13F982F55C466B4));
}

// A raster lies pixel on pixel, and what it doesn't fill is white; its texts are painted over it.
TEST(PictureView, ShowsItsPictureWholeAtTheScreensScale) {
  Picture picture(50, 30);
  for (int y = 0; y < 30; ++y)
    for (int x = 0; x < 50; ++x)
      picture.Row(y)[x] = PixelOf(static_cast<Colour>(x * 5 + y * 0x800 + (x + y) * 0x30000));
  int refreshed = 0;
  PictureView view(
      picture, [&] { ++refreshed; }, nullptr);
  view.resize(26, 16);
  // Where it isn't the raster, which must be of the text's colour.
  const auto others = [&] {
    QRect found;
    const QImage image = view.grab().toImage();
    EXPECT_EQ(image.size(), QSize(52, 32));
    for (int y = 0; y < 32; ++y) {
      for (int x = 0; x < 52; ++x) {
        const QColor seen = image.pixelColor(x, y);
        const Colour colour = x < 50 && y < 30 ? picture.At(x, y) : White;
        if (static_cast<Colour>(seen.red() | seen.green() << 8 | seen.blue() << 16) == colour) continue;
        found |= QRect(x, y, 1, 1);
        EXPECT_TRUE(seen.red() >= 0xCC && seen.green() >= 0x66 && seen.blue() >= 0x33);
      }
    }
    return found;
  };
  EXPECT_TRUE(others().isNull());
  EXPECT_EQ(refreshed, 1);
  picture.Clear();
  picture.PrintAt(4, 6, "l  ", 0x3366CC);
  const QRect letter = others();
  EXPECT_TRUE(letter.left() >= 4 && letter.left() < 10 && letter.top() >= 6 && letter.height() > 8);
}

}  // namespace
}  // namespace sondrix
