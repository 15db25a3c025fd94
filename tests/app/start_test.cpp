#include "app/start.h"

#include "app/app_test.h"
#include "app/captions.h"

namespace sondrix {
namespace {

class StartTest : public AppTest {
 protected:
  bool Start(LangId language) {
    return StartSession(session, {file, language, [this] { return ++asked, std::string("/maps/"); }});
  }
  int asked = 0;
};

TEST_F(StartTest, StoredLanguageThenTheSystems) {
  const struct {
    const char* defLang;
    LangId system;
    const char *item, *done;
    LangId id;
  } cases[] = {
      {"deu", 0x422, "", "", 0x422},
      {"", LangGerman, "DEU", " * Ausgeführt", LangGerman},
      {"DEU", LangEnglish, "DEU", " * Ausgeführt", LangGerman},
      {"RUS", 0x422, "RUS", " * выполнено", LangRussian},
      {"FRA", LangEnglish, "ENG", " * done", LangEnglish},
  };
  for (const auto& [defLang, system, item, done, id] : cases) {
    Store({{"DefLang", defLang}});
    Session fresh(window);
    window.att.clear();
    EXPECT_TRUE(StartSession(fresh, {file, system, {}}));
    EXPECT_EQ(fresh.settings.boxLang, item) << defLang << " " << system;
    EXPECT_EQ(fresh.langId, id) << defLang << " " << system;
    EXPECT_EQ(fresh.run.messages.MsgDone, done);
    EXPECT_EQ(window.att, HintHelpOf(id));
  }
}

// The name of the file is compared with case.
TEST_F(StartTest, OnlyAFirstStartAsksForTheFolder) {
  Store({{"MaxDiff", "7"}, {"UseEho", "5"}});
  const std::string stored = std::exchange(file, folder + PathSeparator + "sondrix.INI");
  EXPECT_TRUE(Start(LangEnglish));
  EXPECT_EQ(session.settings.TargetPath, "/maps/");
  EXPECT_EQ(session.settings.MaxDiff, "300");
  file = stored;
  EXPECT_TRUE(Start(LangEnglish));
  EXPECT_EQ(session.settings.TargetPath, "");
  EXPECT_EQ(session.settings.MaxDiff, "7");
  EXPECT_EQ(session.state.SelectedChannel, 2);
  EXPECT_EQ(asked, 1);
}

TEST_F(StartTest, AFaultSkipsTheRestOfTheStart) {
  OutputFile(file).Write(std::string_view("[Main]\nMaxProc=7\nMakeCut=1\n"));  // HideCut is missing
  EXPECT_FALSE(Start(LangEnglish));
  EXPECT_EQ(window.att, " ! error Load: 13. Type mismatch");
  EXPECT_EQ(session.settings.MaxProc, "7");
  EXPECT_EQ(session.settings.MaxDiff, "");
  EXPECT_TRUE(session.settings.MakeCut);
  EXPECT_EQ(session.messages.MsgBegin, "");
}

TEST_F(StartTest, APackagedFileCountsUntilTheUserHasOne) {
  Store({{"MaxDiff", "7"}});
  const std::string own = file + ".own";
  const StartFacts facts{own, LangEnglish, {}, file};
  for (const char* held : {"7", "8"}) {
    EXPECT_TRUE(StartSession(session, facts));
    EXPECT_EQ(session.settings.MaxDiff, held);
    session.settings.MaxDiff = "8";
    ASSERT_TRUE(SaveSettings(session, own));
  }
}

}  // namespace
}  // namespace sondrix
