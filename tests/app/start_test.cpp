#include "app/start.h"

#include "app/app_test.h"
#include "app/captions.h"

namespace sondrix {
namespace {

TEST_F(AppTest, StoredLanguageThenTheSystems) {
  using Row = std::tuple<const char*, LangId, const char*, LangId>;
  for (const auto& [defLang, system, item, id] :
       {Row{"deu", 0x422, "", 0x422}, Row{"", LangGerman, "DEU", LangGerman},
        Row{"DEU", LangEnglish, "DEU", LangGerman}, Row{"RUS", 0x422, "RUS", LangRussian}}) {
    Store({{"DefLang", defLang}});
    Session fresh(window);
    window.att.clear();
    EXPECT_TRUE(StartSession(fresh, {file, system, {}}));
    EXPECT_EQ(fresh.settings.boxLang, item) << defLang << " " << system;
    EXPECT_EQ(fresh.langId, id) << defLang << " " << system;
    EXPECT_EQ(window.att, HintHelpOf(id));
    EXPECT_EQ(window.shown.back(), "boxLang");
  }
}

TEST_F(AppTest, AFaultOfTheStoredOnesEndsTheStart) {
  Store({{"MakeCut", "5"}});
  EXPECT_FALSE(StartSession(session, {file, LangGerman, {}}));
  EXPECT_EQ(window.att, " ! error Load: 380. Invalid property value");
  EXPECT_EQ(std::tuple(window.kind, window.beeps, session.langId, session.state.SelectedChannel),
            std::tuple(LineKind::Fault, 1, LangGerman, Channel::Primary));
}

TEST_F(AppTest, ThePackagedFileCountsUntilTheUserHasOneAndWithNeitherAFolderIsAsked) {
  Store({{"MaxDiff", "7"}, {"UseEho", "5"}});
  int asked = 0;
  const auto askFolder = [&asked] { return ++asked, std::string("/maps/"); };
  // The name of the file is compared with case.
  EXPECT_TRUE(StartSession(session, {folder + PathSeparator + "sondrix.INI", LangEnglish, askFolder}));
  EXPECT_EQ(session.settings.TargetPath, "/maps/");
  EXPECT_EQ(std::vector(window.shown.begin(), window.shown.begin() + 2),
            (std::vector<std::string>{"TargetPath", "EhoSens"}));
  EXPECT_EQ(session.settings.MaxDiff, "300");
  const StartFacts facts{file + ".own", LangEnglish, askFolder, file};
  for (const char* held : {"7", "8"}) {
    EXPECT_TRUE(StartSession(session, facts));
    EXPECT_EQ(session.settings.TargetPath, "");
    EXPECT_EQ(session.settings.MaxDiff, held);
    session.settings.MaxDiff = "8";
    ASSERT_TRUE(SaveSettings(session, facts.iniFile));
  }
  EXPECT_EQ(session.state.SelectedChannel, Channel::Downscan);
  EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace sondrix
