#include "window_run.h"

#include "app/batch/batch.h"
#include "app/desktop/log_line.h"

#include <QScrollBar>

namespace sondrix {
namespace {

TEST_F(WindowTest, PausesResumesAndWritesWhatTheBatchProgramDoes) {
  for (const char* box : {"MakeCut", "HideCut", "UseDcm"}) Click(box);
  RunWith({[&] {
             EXPECT_FALSE(Find("btnGO")->isEnabled() || Find("Source")->isEnabled());
             EXPECT_FALSE(Find("UseTyp9")->isEnabled());
             EXPECT_TRUE(Find("WPT")->isEnabled());
             Click("RunSet");
           },
           [&] {
             EXPECT_TRUE(window->TheSession().state.PauseFlag);
             EXPECT_EQ(Find<QAbstractButton>("RunSet")->text(), ">>");
             QTest::keyClick(window.get(), Qt::Key_Space);
           },
           [&] { EXPECT_FALSE(window->TheSession().state.PauseFlag); }});
  EXPECT_TRUE(window->Att().ends_with(" * done")) << window->Att();
  EXPECT_EQ(Text("Att"), window->Att());
  EXPECT_TRUE(Find("btnGO")->isEnabled() && Find("Source")->isEnabled());
  EXPECT_FALSE(Find("RunSet")->isEnabled() || Find("RunEnd")->isEnabled());
  EXPECT_EQ(static_cast<LogLine*>(Find("Att"))->Percent(), -1);
  const std::vector<std::string> arguments = {"-o",          Path("batch"), "-sMakeCut=1",
                                              "-sHideCut=1", "-sUseDcm=0",  Path("trip.sl2")};
  ASSERT_EQ(RunBatch(arguments), 0);
  for (const char* file : {"/trip.csv", "/trip_ch2.sl2"}) {
    const std::string expected = ReadWhole(Path("batch") + file);
    EXPECT_GT(expected.size(), 0U) << file;
    EXPECT_TRUE(ReadWhole(Path("out") + file) == expected) << file;
  }
}

TEST_F(WindowTest, StopsAtOnceAlsoInAPause) {
  std::chrono::steady_clock::time_point stopped;
  RunWith({[&] { Click("RunSet"); },
           [&] {
             stopped = std::chrono::steady_clock::now();
             QTest::keyClick(window.get(), Qt::Key_Escape);
           }});
  EXPECT_LT(std::chrono::steady_clock::now() - stopped, std::chrono::milliseconds(100));
  EXPECT_TRUE(window->Att().starts_with(" * proc")) << window->Att();
}

TEST_F(WindowTest, ANoticeIsInTheLanguageChosenInThePauseBefore) {
  RunWith({[&] { Click("RunSet"); }, [&] { ChooseLanguage(2); }, [&] { Click("RunEnd"); }});
  EXPECT_EQ(window->Att(), MessagesOf(LangGerman)->MsgAborted);
}

TEST_F(WindowTest, ClosingDuringARunStopsItAndKeepsTheWindow) {
  RunWith({[&] { EXPECT_FALSE(window->close()); }});
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(window->Att().ends_with(" * done"));
  EXPECT_FALSE(std::filesystem::exists(Path("sondrix.ini")));
  EXPECT_TRUE(window->close());
  EXPECT_TRUE(std::filesystem::exists(Path("sondrix.ini")));
}

// The click waits before its job starts, as long as the job before has paused for a defect.
TEST_F(WindowTest, AClosingOrAKeyInTheFirstWaitStopsTheRun) {
  window->SetSource(WriteEchogram());
  for (const bool closes : {true, false}) {
    window->TheSession().state.DefectPause = 200;
    QTimer::singleShot(50, window.get(), [&] {
      EXPECT_FALSE(Find("btnGO")->isEnabled() || Find("RunSet")->isEnabled());
      if (closes) {
        EXPECT_FALSE(window->close());
      } else {
        QTest::keyClick(window.get(), Qt::Key_Escape);
      }
    });
    Click("btnGO");
    EXPECT_EQ(window->Att(), " * processing aborted by user") << closes;
    EXPECT_FALSE(std::filesystem::exists(Path("out/trip.csv"))) << closes;
    EXPECT_TRUE(window->isVisible() && Find("btnGO")->isEnabled());
  }
}

TEST_F(WindowTest, ContrastLanguageAndWidthChangeDuringARun) {
  RunWith({[&] { Click("RunSet"); }, [&] { Find<QScrollBar>("EhoSens")->setValue(-60); },
           [&] { ChooseLanguage(2); }, [&] { Click("FrmSize"); },
           [&] { EXPECT_EQ(window->TheSession().pictures.ECHO.Width(), 2 * 227); }, [&] { Click("FrmSize"); },
           [&] { Click("RunSet"); }});
  EXPECT_EQ(Fields().EhoSens, -60);
  EXPECT_TRUE(window->Att().ends_with(" * Ausgeführt")) << window->Att();
  // An echo of 200 is black at this contrast.
  const Picture& echo = window->TheSession().pictures.ECHO;
  int dark = 0;
  for (int y = 0; y < echo.Height(); ++y) dark += echo.At(echo.Width() - 4, y) == 0;
  EXPECT_GT(dark, 0);
}

}  // namespace
}  // namespace sondrix

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_SCALE_FACTOR", "2");  // so that places and the pictures' device pixels differ
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
