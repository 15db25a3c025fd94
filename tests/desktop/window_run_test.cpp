#include "window_run.h"

#include "app/batch/batch.h"
#include "app/desktop/log_line.h"

namespace sondrix {
namespace {

TEST_F(WindowTest, PausesResumesAndWritesWhatTheBatchProgramDoes) {
  for (const char* box : {"MakeCut", "HideCut", "UseDcm"}) Click(box);
  RunWith({[&] {
             EXPECT_FALSE(Find("btnGO")->isEnabled() || Find("UseTyp9")->isEnabled());
             Click("RunSet");
           },
           [&] {
             EXPECT_TRUE(window->TheSession().state.PauseFlag);
             QTest::keyClick(window.get(), Qt::Key_Space);
           },
           [&] { EXPECT_FALSE(window->TheSession().state.PauseFlag); }});
  EXPECT_TRUE(window->Att().ends_with(" * done")) << window->Att();
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

// A notice is in the language that was chosen in the pause before.
TEST_F(WindowTest, StopsAtOnceAlsoInAPauseAndByClosing) {
  std::chrono::steady_clock::time_point stopped;
  RunWith({[&] { Click("RunSet"); }, [&] { ChooseLanguage(2); },
           [&] {
             stopped = std::chrono::steady_clock::now();
             QTest::keyClick(window.get(), Qt::Key_Escape);
           }});
  EXPECT_LT(std::chrono::steady_clock::now() - stopped, std::chrono::milliseconds(100));
  EXPECT_EQ(window->Att(), MessagesOf(LangGerman)->MsgAborted);
  RunWith({[&] { EXPECT_FALSE(window->close()); }});
  EXPECT_TRUE(window->isVisible() && !window->Att().ends_with(" * done"));
  EXPECT_FALSE(std::filesystem::exists(Path("sondrix.ini")));
  EXPECT_TRUE(window->close());
  EXPECT_TRUE(std::filesystem::exists(Path("sondrix.ini")));
}

// The click waits before its job starts, as long as the job before has paused for a defect.
TEST_F(WindowTest, AClosingOrAKeyInTheFirstWaitStopsTheRun) {
  window->SetSource(WriteEchogram());
  for (const bool closes : {true, false}) {
    window->TheSession().state.DefectPause = 5000;
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

}  // namespace
}  // namespace sondrix

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_SCALE_FACTOR", "2");  // so that places and the pictures' device pixels differ
  qunsetenv("QT_FONT_DPI");         // which is another scale
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setFont(QFont("DejaVu Sans"));  // whatever this machine prefers
  return RUN_ALL_TESTS();
}
