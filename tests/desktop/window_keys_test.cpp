#include "app/captions.h"
#include "app/desktop/log_line.h"
#include "core/channel.h"
#include "samples/text_export.h"
#include "window_run.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace sondrix {
namespace {

constexpr const char* Controls[] = {"Source", "UseBeep", "UseTyp2", "boxLang", "EhoSens", "btnGO", "MaxDiff"};

// The keys of a run work from everywhere and type nothing; behind the run the focus is where it was.
TEST_F(WindowTest, KeysOfARunWorkWhereverTheFocusIs) {
  const std::string table = Path("trip.csv");
  ASSERT_TRUE(WriteTextExport(table, TableForm(), 40'000'000));
  const std::string echogram = WriteEchogram();
  Fields().DepthMP = "0x1000";
  for (const std::string& source : {echogram, table}) {
    for (const char* control : Controls) {
      Find(control)->setFocus();
      window->SetSource(source);
      const auto press = [&](Qt::Key key) { QTest::keyClick(window->focusWidget(), key); };
      const auto held = [&] {
        std::string all;
        for (const Field& field : sondrix::Fields())
          if (field.name != "TargetName") all += FieldText(Fields(), field) + '\n';
        return all;
      };
      const std::string before = held();
      RunChosen({[&] { press(Qt::Key_Space); },
                 [&] {
                   EXPECT_TRUE(window->TheSession().state.PauseFlag) << control;
                   if (!Find(control)->isEnabled()) press(Qt::Key_Down);  // wherever the focus is now
                   press(Qt::Key_F5);
                   press(Qt::Key_Space);
                 },
                 [&] {
                   EXPECT_FALSE(window->TheSession().state.PauseFlag) << control;
                   press(Qt::Key_Escape);
                 }},
                [&] { press(Qt::Key_F5); });
      EXPECT_TRUE(window->TheSession().state.StopFlag) << control;
      EXPECT_EQ(held(), before) << control;
      EXPECT_EQ(Utf8Of(window->focusWidget()->objectName()), control);
    }
  }
}

TEST_F(WindowTest, ToolkitDialogsSpeakTheChosenLanguage) {
  const char* const yes[] = {"&Да", "&Yes", "&Ja"};
  const char* const ok[] = {"ОК", "OK", "OK"};
  const DesktopServices services = ToolkitServices(window.get());
  for (int language : {0, 1, 2, 0}) {
    ChooseLanguage(language);
    std::vector<std::string> captions;
    const auto answer = [&] {
      for (auto* box : window->findChildren<QMessageBox*>()) {
        captions.push_back(Utf8Of(box->buttons().front()->text()));
        box->buttons().front()->click();
      }
    };
    QTimer::singleShot(0, window.get(), answer);
    EXPECT_TRUE(services.ask("?", ""));
    QTimer::singleShot(0, window.get(), answer);
    services.inform("!", "");
    EXPECT_EQ(captions, (std::vector<std::string>{yes[language], ok[language]}));
  }
}

TEST_F(WindowTest, FileDialogsAskForWhatTheyAreToldTo) {
  const FileDialogs files = ToolkitServices(window.get()).files;
  OutputFile(Path("a.sl2")).Write("");
  std::string asked;
  const auto answer = [&](const char* name) {
    QTimer::singleShot(0, window.get(), [&asked, this, name] {
      auto* dialog = window->findChild<QFileDialog*>();
      asked =
          Utf8Of(dialog->windowTitle() + QLatin1Char('|') + dialog->nameFilters().join(QLatin1Char('|'))) +
          '|' + std::to_string(dialog->fileMode()) + std::to_string(dialog->acceptMode());
      if (*name) dialog->selectFile(QLatin1String(name));
      QMetaObject::invokeMethod(dialog, *name ? "accept" : "reject");
    });
  };
  answer("a.sl2");
  EXPECT_EQ(files.askFile(folder.string(), {{"All", "*.A;*.b;"}, {"B", "*.b"}}, "File?"), Path("a.sl2"));
  EXPECT_EQ(asked, "File?|All (*.a *.A *.b)|B (*.b)|00");
  answer("out");
  std::filesystem::create_directories(folder / "out");
  EXPECT_EQ(files.askFolder(folder.string(), "Folder?"), Path("out"));
  EXPECT_TRUE(asked.starts_with("Folder?|")) << asked;
  answer("");
  EXPECT_EQ(files.askFolder(folder.string(), ""), std::nullopt);
  answer("b.png");
  EXPECT_EQ(ToolkitServices(window.get()).askPicture(Path("x.png")), Path("b.png"));
  EXPECT_EQ(asked, "Save As|PNG (*.png)|BMP (*.bmp)|01");
  EXPECT_EQ(files.shellOpen(Path("none")), 0);
}

TEST_F(WindowTest, TheFinalLineIsReadWhole) {
  auto* line = static_cast<LogLine*>(Find("Att"));
  const QRect oneRow = line->geometry();
  for (int language : {0, 1, 2}) {
    ChooseLanguage(language);
    RunWith({});
    EXPECT_TRUE(line->IsWhole()) << window->Att();
    EXPECT_EQ(Utf8Of(line->toolTip()), window->Att());
    EXPECT_TRUE(line->text().contains(QLatin1String("*"))) << window->Att();
  }
  line->ShowLine(std::string(500, 'x'));
  EXPECT_FALSE(line->IsWhole());
  EXPECT_EQ(line->toolTip().size(), 500);
  EXPECT_LT(line->geometry().bottom(), Find("btnGO")->geometry().top());
  EXPECT_GT(line->geometry().top(), Find("ECHO")->geometry().bottom());
  line->ShowLine(" * done");
  EXPECT_EQ(line->geometry(), oneRow);
}

TEST_F(WindowTest, AChosenSourceTellsWhatItHolds) {
  const auto* notes = Find<QLabel>("Notes");
  const auto text = [notes] { return notes->isVisible() ? Utf8Of(notes->text()) : std::string(); };
  WriteBytes(Path("two.sl2"), EchogramBytes(2, {Frame(2, 10), Frame(7, 0)}));
  window->SetSource(Path("two.sl2"));
  EXPECT_EQ(text(), "") << "while it may be typed on";
  EXPECT_TRUE(QTest::qWaitFor([&] { return !text().empty(); }));
  EXPECT_EQ(text(),
            "two.sl2: 4.1 kB, 2 frames\nDownscan: 1 frames, 1 with a depth, indices 0 to 0\n"
            "channel 7: 1 frames, 0 with a depth, indices 0 to 0\n"
            "2016-05-25 14:00:00 to 2016-05-25 14:00:00\ndepths 3.05 to 3.05 m");
  EXPECT_EQ(Find("UseTyp2")->toolTip(), "");
  EXPECT_EQ(Find("UseTyp5")->toolTip(), "Not in this source");
  window->SetSource(Path("none.sl2"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return text() == "none.sl2: can't be read"; }));
  EXPECT_EQ(Find("UseTyp5")->toolTip(), "");
  window->SetSource("");
  EXPECT_TRUE(QTest::qWaitFor([&] { return text().empty(); }));
}

}  // namespace
}  // namespace sondrix
