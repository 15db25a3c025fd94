#include "app/load_settings.h"

#include "app/ini_file.h"
#include "core/code_page.h"
#include "core/files.h"
#include "test_window.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sondrix {
namespace {

class IniTest : public testing::Test {
 protected:
  ~IniTest() override { std::filesystem::remove(PathOf(file)); }

  void Write(std::string_view utf8) { OutputFile(file).Write(ToCodePage(utf8)); }

  // All flags and the contrast at their defaults but for the lines given, which come first and so count.
  void WriteFull(const std::string& lines) {
    std::string text = "[Main]\r\n" + lines + "\r\n";
    for (const Field& field : Fields()) {
      const bool isNeeded = field.kind == FieldKind::Flag || field.kind == FieldKind::Contrast;
      if (isNeeded && !field.key.empty())
        text += std::string(field.key) + "=" + std::string(field.defaultText) + "\r\n";
    }
    Write(text);
  }

  std::string file = testing::TempDir() + "sondrix_" +
                     testing::UnitTest::GetInstance()->current_test_info()->name() + ".ini";
  TestWindow window;
  Session session{window};
};

TEST_F(IniTest, ReadsAsThePlatformDoes) {
  const std::string longText(300, 'x');
  Write(
      "MaxDiff=0\n[Other]\nMaxDiff=1\n;[Main]\n[ main ]\r\n;MaxDiff=2\r\n MAXDIFF = 3 4 \r\nmaxdiff=5\r\n"
      "Quoted=\" a \"\nOne='\nEquals=a=b\nNo line\nLong=" +
      longText + "\nSource=Озеро.sl2\n[Last]\nBehind=6\n[Main]\nBehind=7");
  const struct {
    const char *key, *value;
  } cases[] = {{"MaxDiff", "3 4"}, {"Quoted", " a "}, {"One", "'"},    {"Equals", "a=b"},
               {"Missing", ""},    {"Behind", ""},    {"No line", ""}, {"Source", "Озеро.sl2"}};
  for (const auto& oneCase : cases) EXPECT_EQ(IRead(file, "Main", oneCase.key), oneCase.value) << oneCase.key;
  EXPECT_EQ(IRead(file, "Main", "Long"), longText.substr(0, 255));
  EXPECT_EQ(IRead(file, "LAST", "behind"), "6");
  EXPECT_EQ(IRead(file + ".none", "Main", "MaxDiff"), "");
}

TEST_F(IniTest, ValuesReachTheFields) {
  const struct {
    std::string lines;
    std::vector<std::pair<const char*, const char*>> held;
  } cases[] = {
      {"", {{"Source", ""}, {"MaxDiff", ""}, {"UseDcm", "1"}, {"MakeGraf", "1"}, {"boxLang", ""}}},
      {"MaxProc=123\nDepthDiff=1,5\nUseDcm= 0", {{"MaxProc", "123"}, {"DepthDiff", "1,5"}, {"UseDcm", "0"}}},
      {"EhoSens=-100\nUseBeep=2\nUseEho=5", {{"EhoSens", "-100"}, {"UseBeep", "1"}, {"UseTyp", "2"}}},
      {"ViewOzi=1\nUseRad=1", {{"ViewOzi", "0"}, {"UseRad", "0"}}},
      {"DefLang=DEU", {{"boxLang", "DEU"}}},
      {"DefLang=FRA", {{"boxLang", ""}}},
      // Cropping clears the pictures, and the later lines have the last word.
      {"MakeCut=1\nSaveGraf=1\nMakeGraf=1", {{"MakeCut", "1"}, {"SaveGraf", "1"}, {"MakeGraf", "1"}}},
      {"MakeCut=1\nSaveGraf=1\nMakeGraf=0", {{"MakeCut", "1"}, {"SaveGraf", "0"}, {"MakeGraf", "0"}}},
      {"SaveGraf=1\nMakeGraf=0", {{"SaveGraf", "0"}, {"MakeGraf", "0"}}},
  };
  for (const auto& oneCase : cases) {
    WriteFull(oneCase.lines);
    Session fresh(window);
    EXPECT_FALSE(LoadSettings(fresh, file)) << oneCase.lines;
    for (const auto& [name, text] : oneCase.held) {
      EXPECT_EQ(FieldText(fresh.settings, *FindField(name)), text) << oneCase.lines << ": " << name;
    }
  }
}

TEST_F(IniTest, AFaultEndsTheLoadAtItsKey) {
  const struct {
    const char *lines, *key;
    int number;
  } cases[] = {
      {"UseBeep=", "UseBeep", 13},      {"UseBeep=on", "UseBeep", 13},   {"UseBeep=3", "UseBeep", 380},
      {"UseBeep=-1", "UseBeep", 380},   {"UseBeep=40000", "UseBeep", 6}, {"EhoSens=51", "EhoSens", 380},
      {"EhoSens=-101", "EhoSens", 380}, {"EhoSens=", "EhoSens", 13},     {"EhoSens=70000", "EhoSens", 6},
  };
  for (const auto& oneCase : cases) {
    WriteFull(std::string("DefLang=DEU\n") + oneCase.lines);
    Session fresh(window);
    const auto fault = LoadSettings(fresh, file);
    ASSERT_TRUE(fault) << oneCase.lines;
    EXPECT_EQ(fault->key, oneCase.key);
    EXPECT_EQ(fault->fault.Number(), oneCase.number) << oneCase.lines;
    EXPECT_EQ(fresh.settings.boxLang, "");
  }

  Write("[Main]\nMaxDiff=7\nMakeCut=0\nHideCut=1\nUseHead=0\n");  // SaveGraf is missing
  const auto fault = LoadSettings(session, file);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->key, "SaveGraf");
  EXPECT_EQ(fault->fault.Number(), 13);
  EXPECT_EQ(session.settings.MaxDiff, "7");
  EXPECT_TRUE(session.settings.HideCut);
  EXPECT_TRUE(session.settings.UseHead);
}

}  // namespace
}  // namespace sondrix
