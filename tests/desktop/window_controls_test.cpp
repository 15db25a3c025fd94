#include "app/captions.h"
#include "app/desktop/fit_label.h"
#include "app/desktop/log_line.h"
#include "window_run.h"

#include <QClipboard>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QUrl>
#include <set>

namespace sondrix {
namespace {

TEST_F(WindowTest, EveryFieldHasItsControlAndEveryControlItsField) {
  const std::set<std::string_view> hidden = {"UseMet", "UseXYZ", "UseRad"};
  const std::set<std::string_view> unnamed = {"boxLang", "ScanCut"};  // ScanCut stands behind "to"
  for (const Field& field : sondrix::Fields()) {
    const std::string name(field.name);
    const auto* label = Find<QLabel>(("lbl" + name).c_str());
    ASSERT_TRUE(Find(name.c_str())) << name;
    EXPECT_NE(Find(name.c_str())->isVisible(), hidden.contains(name)) << name;
    EXPECT_TRUE(unnamed.contains(name) || (label && !label->text().isEmpty())) << name;
  }
  for (const QWidget* control : Find("Source")->parentWidget()->findChildren<QWidget*>()) {
    const bool isField =
        control->inherits("QLineEdit") || control->inherits("QCheckBox") || control->inherits("QComboBox");
    EXPECT_TRUE(!isField || FindField(Utf8Of(control->objectName()))) << Utf8Of(control->objectName());
  }
}

TEST_F(WindowTest, KeysThatAFieldDoesNotTakeAreDropped) {
  using Row = std::tuple<const char*, const char*, const char*>;
  for (const auto& [field, typed, held] : {Row{"DepthSm", "-1,5a.", "-15"}, Row{"MaxDiff", "-3e2", "32"},
                                           Row{"MaxProc", "1234", "12"}, Row{"DistDiff", "1,5 a", "1,5 a"}}) {
    Find<QLineEdit>(field)->clear();
    Type(field, typed);
    EXPECT_EQ(Text(field), held);
    EXPECT_EQ(Fields().*FindField(field)->text, held);
    Find<QLineEdit>(field)->clear();
    QApplication::clipboard()->setText("1,5x");
    QTest::keyClick(Find(field), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(field), "1,5x");
    QTest::keyClick(Find(field), Qt::Key_Backspace);
    EXPECT_EQ(Text(field), "1,5");
  }
}

TEST_F(WindowTest, BoxesOptionsAndMountingReachTheSession) {
  Session& session = window->TheSession();
  Click("SaveGraf");
  EXPECT_TRUE(Fields().SaveGraf);
  Click("MakeCut");
  EXPECT_FALSE(Checked("MakeGraf") || Checked("SaveGraf"));
  EXPECT_FALSE(Find("SaveGraf")->isEnabled() || Find("MakeScrn")->isEnabled());
  Click("lblMakeGraf");  // the label is a part of the box
  EXPECT_TRUE(Fields().MakeGraf && Find("MakeScrn")->isEnabled());
  Click("UseTyp9");
  EXPECT_EQ(session.state.SelectedChannel, Channel::Scan3D);
  EXPECT_FALSE(Checked("UseTyp2"));
  for (const auto& [button, mark] : {std::pair("WPT", MarkRelief), {"WPF", MarkFish}}) {
    Click(button);
    EXPECT_EQ(session.state.MarkRequest, mark);
  }
  Click("ViewOzi");  // there is no library here
  EXPECT_FALSE(Checked("ViewOzi") || window->Att().empty());
  const std::uint64_t before = session.pictures.ECHO.Version();
  Type("DucerX", "-120");
  EXPECT_EQ(session.limits.DucerXM, -1.2F);
  EXPECT_GT(session.pictures.ECHO.Version(), before);
  for (const char* line : {" ! Track Course = Heading", ""}) {
    QTest::mouseDClick(Find("lblCrsHed"), Qt::LeftButton);
    EXPECT_EQ(Fields().UseRad, *line != '\0');
    EXPECT_EQ(Text("Att"), line);
  }
}

TEST_F(WindowTest, DialogsDropAndKeys) {
  chosenFile = Path("a.sl2");
  Click("btnSource");
  EXPECT_EQ(Fields().Source, chosenFile);
  chosenFile.clear();
  Click("btnSource");
  EXPECT_EQ(Text("Source"), "");
  Find<QLineEdit>("TargetPath")->clear();
  Click("btnTargetPath");
  EXPECT_EQ(Text("TargetPath"), folder.string());

  QTest::keyClick(window.get(), Qt::Key_F5);
  EXPECT_EQ(Text("Att"), " * select source file...");
  QTest::keyClick(window.get(), Qt::Key_F1);
  EXPECT_EQ(opened, Path("help.txt"));
  const std::string font = Utf8Of(Find("lblDepthSm")->font().family());
  EXPECT_NE(ReadWhole(opened).find("\r\nSoft Font/Charset: " + font + "/0\r\n"), std::string::npos);

  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QtText(Path("dropped.sl3")))});
  QDragEnterEvent enter({20, 20}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.get(), &drop);
  EXPECT_EQ(Fields().Source, Path("dropped.sl3"));
}

TEST_F(WindowTest, PicturesAreSavedAndCopied) {
  std::filesystem::create_directories(folder / "out");
  Click("MakeScrn");
  ASSERT_FALSE(std::filesystem::is_empty(folder / "out"));
  const auto saved = std::filesystem::directory_iterator(folder / "out")->path();
  EXPECT_EQ(saved.filename().string().size(), 10U);  // hhmmss.bmp
  Find<QLineEdit>("TargetPath")->setText(QtText(Path("nowhere/")));
  Click("MakeScrn");
  EXPECT_TRUE(window->Att().starts_with(" ! error MakeScrn: 76. ") && beeps == 1) << window->Att();

  window->services.askPicture = [&](const std::string&) { return Path("saved.png"); };
  const auto choose = [&](const char* name, const char* entry) {
    emit Find(name)->customContextMenuRequested(QPoint(5, 5));
    for (QAction* action : Find(name)->findChildren<QAction*>())
      if (action->text() == entry) action->trigger();
  };
  choose("ECHO", "Copy the picture");
  EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(806, 840));
  choose("SMPL", "Save the picture as...");
  EXPECT_EQ(QImage(QtText(Path("saved.png"))).size(), QSize(806, 840));
  choose("Att", "Open the output folder");
  EXPECT_EQ(opened, Path("nowhere/"));
}

TEST_F(WindowTest, TextsFitTheirRoomInEveryLanguage) {
  for (std::size_t i = 0; i < LanguageItems.size(); ++i) {
    ChooseLanguage(static_cast<int>(i));
    EXPECT_EQ(Fields().boxLang, LanguageItems[i].name);
    EXPECT_EQ(Text("Att"), HintHelpOf(LanguageItems[i].id));
    for (const QLabel* label : window->findChildren<QLabel*>()) {
      if (!label->isVisible()) continue;
      EXPECT_FALSE(label->text().isEmpty()) << Utf8Of(label->objectName());
      EXPECT_TRUE(FitsRoom(label)) << Utf8Of(label->text());
    }
  }
}

TEST_F(WindowTest, SettingsComeBackAtTheNextStart) {
  Type("DucerX", "-50");
  Find<QLineEdit>("DucerY")->setText("1E300");  // as pasted: it must not keep the program from starting
  Click("UseUTM");
  ChooseLanguage(2);
  Click("UseTyp5");
  EXPECT_TRUE(window->close());
  Open();
  EXPECT_EQ(Text("DucerX"), "-50");
  EXPECT_EQ(window->TheSession().limits.DucerXM, -0.5F);
  EXPECT_EQ(Text("DucerY"), "1E300");
  EXPECT_TRUE(Checked("UseUTM") && Checked("UseTyp2"));
  EXPECT_EQ(Find<QLabel>("lblUseRev")->text(), "Geber ist verkehrt montiert");
  EXPECT_EQ(Find("UseDcm")->toolTip(), "");

  OutputFile(Path("sondrix.ini")).Write(std::string_view("[Main]\r\nSource=x\r\nMakeCut=5\r\n"));
  Open();
  EXPECT_TRUE(window->Att().starts_with(" ! error Load: 380. ")) << window->Att();
  EXPECT_EQ(Find<QLabel>("lblUseRev")->text(), "Датчик стоит задом наперед");
  EXPECT_TRUE(Find("btnGO")->isEnabled());
}

// In pixels of the screen, two a point.
TEST(LogLine, ItsBarGoesAsFarAsTheRun) {
  LogLine line(nullptr);
  line.SetPlaces({0, 0, 200, 22}, {0, 0, 200, 29});
  const auto bar = [&] {
    QRect found;
    const QImage image = line.grab().toImage();
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x)
        if (image.pixelColor(x, y) == line.palette().color(QPalette::Highlight)) found |= QRect(x, y, 1, 1);
    return found;
  };
  EXPECT_EQ(PercentIn(" 7% 5%") + PercentIn(" 100% ") + PercentIn("% 5") + PercentIn(" 250%"), 105);
  line.ShowLine("one row 50%", true);
  EXPECT_EQ(line.height(), 22);
  EXPECT_EQ(line.palette().color(QPalette::Text), QColor(0xB0, 0x10, 0x10));
  line.ShowLine(std::string(400, 'x'));
  EXPECT_EQ(line.height(), 29);
  line.SetRunning(true);
  EXPECT_TRUE(bar().isNull());
  for (const char* text : {"50%", "still"}) {
    line.ShowLine(text);
    EXPECT_EQ(bar(), QRect(QPoint(4, 48), QPoint(199, 53)));
  }
  line.SetRunning(false);
  EXPECT_TRUE(bar().isNull());
}

}  // namespace
}  // namespace sondrix
