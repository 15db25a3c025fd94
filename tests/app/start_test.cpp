#include "app/start.h"

#include "app/captions.h"
#include "app/choose_language.h"
#include "app/ini_file.h"
#include "app/settings_store.h"
#include "core/code_page.h"
#include "core/files.h"
#include "test_window.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace sondrix {
namespace {

TEST(ChooseLanguage, StoredChoiceThenTheSystem) {
  const struct {
    const char* defLang;
    LangId system;
    const char* item;
    LangId id;
  } cases[] = {
      {"", LangRussian, "RUS", LangRussian},    {"", LangGerman, "DEU", LangGerman}, {"", 0x422, "", 0x422},
      {"DEU", LangEnglish, "DEU", LangGerman},  {"RUS", 0x422, "RUS", LangRussian},  {"", 0, "", 0},
      {"FRA", LangEnglish, "ENG", LangEnglish}, {"deu", 0x422, "", 0x422},
  };
  for (const auto& oneCase : cases) {
    const LanguageChoice choice = ChooseLanguage(oneCase.defLang, oneCase.system);
    EXPECT_EQ(choice.item, oneCase.item) << oneCase.defLang << " " << oneCase.system;
    EXPECT_EQ(choice.id, oneCase.id) << oneCase.defLang << " " << oneCase.system;
  }
}

class StartTest : public testing::Test {
 protected:
  ~StartTest() override { std::filesystem::remove(PathOf(file)); }
  bool Start(LangId language) {
    return StartSession(session, {file, language, [this] { return ++asked, std::string("/maps/"); }});
  }
  // A whole file as a closing writes it, with one change.
  void Store(std::string_view key, std::string_view value) {
    TestWindow other;
    Session stored(other);
    ASSERT_TRUE(SaveSettings(stored, file));
    ASSERT_TRUE(IWrite(file, IniSection, key, value));
  }

  std::string file = testing::TempDir() + "sondrix_" +
                     testing::UnitTest::GetInstance()->current_test_info()->name() + ".ini";
  TestWindow window;
  Session session{window};
  int asked = 0;
};

TEST_F(StartTest, AFirstStartTakesDefaultsAndTheLanguageOfTheSystem) {
  EXPECT_TRUE(Start(LangGerman));
  EXPECT_EQ(session.settings.TargetPath, "/maps/");
  EXPECT_EQ(session.settings.MaxDiff, "300");
  EXPECT_EQ(session.settings.boxLang, "DEU");
  EXPECT_EQ(session.messages.DucerLabelShift, -95);
  EXPECT_EQ(session.state.SelectedChannel, 2);
  EXPECT_EQ(window.att, HintHelpOf(LangGerman));
}

TEST_F(StartTest, AnUnknownLanguageLeavesEverythingAsBuilt) {
  EXPECT_TRUE(Start(0x422));
  EXPECT_EQ(session.settings.boxLang, "");
  EXPECT_EQ(session.langId, 0x422);
  EXPECT_EQ(session.messages.MsgBegin, "");
  EXPECT_EQ(window.att, "");
}

TEST_F(StartTest, StoredValuesComeBack) {
  Store("DefLang", "DEU");
  IWrite(file, IniSection, "UseEho", "5");
  IWrite(file, IniSection, "EhoSens", "-100");
  EXPECT_TRUE(Start(LangEnglish));
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(session.settings.TargetPath, "");
  EXPECT_EQ(session.settings.EhoSens, -100);
  EXPECT_EQ(session.langId, LangGerman);
  EXPECT_EQ(session.messages.MsgDone, " * Ausgeführt");
  EXPECT_EQ(session.state.SelectedChannel, 2);
}

TEST_F(StartTest, ABadLanguageIsPassedOver) {
  Store("DefLang", "FRA");
  EXPECT_TRUE(Start(LangRussian));
  EXPECT_EQ(session.settings.boxLang, "RUS");
  EXPECT_EQ(window.att, HintHelpOf(LangRussian));
}

TEST_F(StartTest, AFaultSkipsTheRestOfTheStart) {
  Store("UseHead", "");
  IWrite(file, IniSection, "UseBeep", "1");
  IWrite(file, IniSection, "MakeGraf", "0");
  IWrite(file, IniSection, "DefLang", "DEU");
  EXPECT_FALSE(Start(LangEnglish));
  EXPECT_EQ(window.att, " ! error Load: 13. Type mismatch");
  EXPECT_TRUE(session.settings.UseBeep);
  EXPECT_TRUE(session.settings.UseHead);
  EXPECT_TRUE(session.settings.MakeGraf);
  EXPECT_EQ(session.settings.boxLang, "");
  EXPECT_EQ(session.messages.MsgBegin, "");
  EXPECT_EQ(session.state.SelectedChannel, 0);
}

TEST_F(StartTest, APackagedFileCountsUntilTheUserHasOne) {
  Store("MaxDiff", "7");
  const std::string own = file + ".own";
  const StartFacts facts{own, LangEnglish, [this] { return ++asked, std::string(); }, file};
  EXPECT_TRUE(StartSession(session, facts));
  EXPECT_EQ(session.settings.MaxDiff, "7");
  session.settings.MaxDiff = "8";
  ASSERT_TRUE(SaveSettings(session, own));
  Session next(window);
  EXPECT_TRUE(StartSession(next, facts));
  EXPECT_EQ(next.settings.MaxDiff, "8");
  EXPECT_EQ(asked, 0);
  std::filesystem::remove(PathOf(own));
}

// The name of the file is compared with case.
TEST_F(StartTest, AFileInOtherLettersIsAbsent) {
  Store("MaxDiff", "7");
  file.replace(file.size() - 4, 4, ".INI");
  EXPECT_TRUE(Start(LangEnglish));
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(session.settings.MaxDiff, "300");
  file.replace(file.size() - 4, 4, ".ini");
}

}  // namespace
}  // namespace sondrix
