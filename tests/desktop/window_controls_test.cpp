#include "app/captions.h"
#include "app/desktop/fit_label.h"
#include "app/desktop/log_line.h"
#include "window_run.h"

#include <QClipboard>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QUrl>

namespace sondrix {
namespace {

TEST_F(WindowTest, KeysThatAFieldDoesNotTakeAreDropped) {
  const struct {
    const char *field, *typed, *held;
  } cases[] = {{"DepthSm", "-1,5a.", "-15"}, {"DucerX", "1-", "1-"},    {"DucerY", "x7", "7"},
               {"DepthDiff", "-1,5", "15"},  {"MaxDiff", "3e2", "32"},  {"MaxSide", "4.0", "40"},
               {"MaxGrad", " -9", "9"},      {"MaxProc", "1234", "12"}, {"DistDiff", "1,5 a", "1,5 a"},
               {"TargetName", "a-1", "a-1"}, {"ScanSkip", "1x-", "1x-"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.field);
    auto* field = Find<QLineEdit>(c.field);
    field->clear();
    Type(c.field, c.typed);
    EXPECT_EQ(Text(c.field), c.held);
    EXPECT_EQ(Fields().*FindField(c.field)->text, c.held);
    QTest::keyClick(field, Qt::Key_Backspace);
    EXPECT_EQ(Text(c.field), std::string(c.held, std::string(c.held).size() - 1));
    // Pasted text passes.
    field->clear();
    QApplication::clipboard()->setText("1,5x");
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(c.field), "1,5x");
  }
}

TEST_F(WindowTest, BoxesAndOptionsDoWhatTheyDo) {
  Click("SaveGraf");
  EXPECT_TRUE(Fields().SaveGraf);
  Click("MakeCut");
  EXPECT_FALSE(Fields().MakeGraf || Fields().SaveGraf || Checked("MakeGraf") || Checked("SaveGraf"));
  EXPECT_FALSE(Find("SaveGraf")->isEnabled() || Find("MakeScrn")->isEnabled());
  Click("lblMakeGraf");  // the label is a part of the box
  EXPECT_TRUE(Fields().MakeGraf && Find("MakeScrn")->isEnabled());
  Click("UseTyp9");
  EXPECT_EQ(window->TheSession().state.SelectedChannel, 9);
  EXPECT_FALSE(Checked("UseTyp2"));
  Click("UseTyp0");
  EXPECT_EQ(window->TheSession().state.ResyncMarker, 0x07800000U);
  Click("WPF");
  EXPECT_EQ(window->TheSession().state.MarkRequest, MarkFish);
  Click("ViewOzi");  // there is no library here
  EXPECT_FALSE(Checked("ViewOzi"));
  EXPECT_FALSE(window->Att().empty());
  for (const char* name : {"UseMet", "UseRad", "lblUseMet", "lblUseRad"}) {
    EXPECT_FALSE(Find(name)->isEnabled() || Find(name)->isVisible()) << name;
  }
}

TEST_F(WindowTest, TheSketchFollowsTheMountingAndTheSwitchItsLabel) {
  const std::uint64_t before = window->TheSession().pictures.ECHO.Version();
  Type("DucerX", "-");
  EXPECT_EQ(window->TheSession().limits.DucerXM, 0);
  Type("DucerX", "120");
  EXPECT_EQ(window->TheSession().limits.DucerXM, -1.2F);
  EXPECT_GT(window->TheSession().pictures.ECHO.Version(), before);
  EXPECT_EQ(window->TheSession().pictures.ECHO.Texts().back().text, "Ducer");

  QTest::mouseDClick(Find("lblCrsHed"), Qt::LeftButton);
  EXPECT_TRUE(Fields().UseRad);
  EXPECT_EQ(Text("Att"), " ! Track Course = Heading");
  EXPECT_EQ(beeps, 1);
  QTest::mouseDClick(Find("lblCrsHed"), Qt::LeftButton);
  EXPECT_FALSE(Fields().UseRad);
  EXPECT_EQ(Text("Att"), "");
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
  EXPECT_EQ(askedFolder, folder.string());
  EXPECT_EQ(Text("TargetPath"), folder.string());

  QTest::keyClick(window.get(), Qt::Key_F5);
  EXPECT_EQ(Text("Att"), " * select source file...");
  QTest::keyClick(window.get(), Qt::Key_F1);
  EXPECT_EQ(opened, Path("help.txt"));
  Find("TargetName")->setFocus();
  Type("TargetName", "a b");
  EXPECT_EQ(Text("TargetName"), "a b");

  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QtText(Path("dropped.sl3")))});
  QDragEnterEvent enter({20, 20}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.get(), &drop);
  EXPECT_EQ(Fields().Source, Path("dropped.sl3"));
  EXPECT_EQ(Text("Source"), Path("dropped.sl3"));
}

TEST_F(WindowTest, NarrowsAndWidensAndThePicturesTakeTheRoom) {
  EXPECT_EQ(window->size(), QSize(775, 480));
  EXPECT_EQ(Find("ECHO")->size(), QSize(227, 420));
  EXPECT_EQ(Find("SMPL")->geometry().left() - Find("ECHO")->geometry().left(), 226);
  Click("FrmSize");
  EXPECT_EQ(window->width(), 410);
  EXPECT_EQ(Find<QAbstractButton>("FrmSize")->text(), ">>");
  EXPECT_FALSE(Find("Source")->isVisible());
  Click("FrmSize");
  EXPECT_EQ(window->width(), 775);
  EXPECT_TRUE(Find("Source")->isVisible());
  window->resize(1175, 700);
  QApplication::processEvents();
  const Pictures& pictures = window->TheSession().pictures;
  EXPECT_EQ(pictures.ECHO.Height(), 640);
  EXPECT_EQ(pictures.METR.Height(), 640);
  EXPECT_GT(pictures.ECHO.Width(), 500);
  EXPECT_EQ(pictures.ECHO.Width(), Find("ECHO")->width());
}

TEST_F(WindowTest, SavesTheScreenAndReportsWhereItCanNot) {
  std::filesystem::create_directories(folder / "out");
  Click("MakeScrn");
  ASSERT_FALSE(std::filesystem::is_empty(folder / "out"));
  const auto saved = std::filesystem::directory_iterator(folder / "out")->path();
  EXPECT_EQ(saved.filename().string().size(), 10U);  // hhmmss.bmp
  EXPECT_EQ(ReadWhole(saved.string()).substr(0, 2), "BM");
  Find<QLineEdit>("TargetPath")->setText(QtText(Path("nowhere/")));
  Click("MakeScrn");
  EXPECT_TRUE(window->Att().starts_with(" ! error MakeScrn: 76. ")) << window->Att();
}

TEST_F(WindowTest, ThePicturesMenuCopiesSavesAndOpensTheFolder) {
  window->services.askPicture = [&](const std::string&) { return Path("saved.png"); };
  const auto choose = [&](const char* name, const char* entry) {
    emit Find(name)->customContextMenuRequested(QPoint(5, 5));
    for (QMenu* menu : Find(name)->findChildren<QMenu*>()) {
      for (QAction* action : menu->actions()) {
        if (action->text() == entry) action->trigger();
      }
    }
  };
  QApplication::clipboard()->clear();
  choose("ECHO", "Copy the picture");
  EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(403, 420));
  choose("SMPL", "Save the picture as...");
  EXPECT_EQ(QImage(QtText(Path("saved.png"))).size(), QSize(403, 420));
  choose("Att", "Open the output folder");
  EXPECT_EQ(opened, Path("out/"));
}

TEST_F(WindowTest, LabelsFitTheirRoomInEveryLanguage) {
  for (int i = 0; i < 3; ++i) {
    const std::string language(LanguageItems[static_cast<std::size_t>(i)].name);
    ChooseLanguage(i);
    EXPECT_EQ(Fields().boxLang, language);
    EXPECT_EQ(Text("Att"), HintHelpOf(LangIdOf(language)));
    for (const QLabel* label : window->findChildren<QLabel*>()) {
      if (!label->isVisible()) continue;
      EXPECT_FALSE(label->text().isEmpty()) << Utf8Of(label->objectName());
      EXPECT_TRUE(FitsRoom(label)) << language << " " << Utf8Of(label->text());
    }
    for (const QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
      if (button->text().isEmpty()) continue;
      EXPECT_LE(button->fontMetrics().horizontalAdvance(button->text()) + 4, button->width())
          << Utf8Of(button->text());
    }
  }
}

TEST_F(WindowTest, SettingsComeBackAtTheNextStart) {
  Find<QLineEdit>("MaxProc")->setText("123");
  Type("DucerX", "-50");
  Find<QLineEdit>("DucerY")->setText("1E300");  // as pasted: it must not keep the program from starting
  Click("UseUTM");
  ChooseLanguage(2);
  Click("UseTyp5");
  EXPECT_TRUE(window->close());
  Open();
  EXPECT_EQ(Text("MaxProc"), "123");
  EXPECT_EQ(Text("DucerX"), "-50");
  EXPECT_EQ(window->TheSession().limits.DucerXM, -0.5F);
  EXPECT_EQ(Text("DucerY"), "1E300");
  EXPECT_TRUE(Checked("UseUTM"));
  EXPECT_TRUE(Checked("UseTyp2"));
  EXPECT_EQ(Find<QLabel>("lblUseRev")->text(), "Geber ist verkehrt montiert");
  EXPECT_EQ(Find("UseDcm")->toolTip(), "");
  ChooseLanguage(1);
  EXPECT_EQ(Find("lblUseDcm")->toolTip(), "");

  OutputFile(Path("sondrix.ini")).Write(std::string_view("[Main]\r\nSource=x\r\nMakeCut=5\r\n"));
  Open();
  EXPECT_TRUE(window->Att().starts_with(" ! error Load: 380. ")) << window->Att();
  EXPECT_EQ(Find<QLabel>("lblUseRev")->text(), "Датчик стоит задом наперед");
  EXPECT_TRUE(Find("btnGO")->isEnabled());
}

TEST(LogLine, ProgressIsTheFirstPercentage) {
  const struct {
    const char* line;
    int percent;
  } cases[] = {{" 45% scan 12", 45}, {" ! log-file error 7% offset 5%", 7},
               {" scan", -1},        {"% 5", -1},
               {" 100% ", 100},      {" 250%", -1}};
  for (const auto& c : cases) EXPECT_EQ(PercentOf(c.line), c.percent) << c.line;
}

}  // namespace
}  // namespace sondrix
