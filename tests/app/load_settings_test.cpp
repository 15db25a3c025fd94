#include "app/load_settings.h"

#include "app/app_test.h"
#include "core/code_page.h"

namespace sondrix {
namespace {

TEST_F(AppTest, ReadsAsThePlatformDoes) {
  const std::string longText(300, 'x');
  OutputFile(file).Write(
      ToCodePage("MaxDiff=0\n[Other]\nMaxDiff=1\n;[Main]\n[ main ]\r\n;MaxDiff=2\r\n MAXDIFF = 3 4 \r\n"
                 "maxdiff=5\r\nQuoted=\" a \"\nOne='\nEquals=a=b\nNo line\nLong=" +
                 longText + "\nSource=Озеро.sl2\n[Last]\nBehind=6\n[Main]\nBehind=7"));
  const Texts values = {{"MaxDiff", "3 4"}, {"Quoted", " a "}, {"One", "'"},
                        {"Equals", "a=b"},  {"Behind", ""},    {"Long", longText.substr(0, 255)},
                        {"No line", ""},    {"Missing", ""},   {"Source", "Озеро.sl2"}};
  for (const auto& [key, value] : values) EXPECT_EQ(IRead(file, "Main", key), value) << key;
  EXPECT_EQ(IRead(file, "LAST", "behind"), "6");
  EXPECT_EQ(IRead(file + ".none", "Main", "MaxDiff"), "");
}

// Rows of a later version: an ini file of this one doesn't stop its start, and what is stored empty stays so.
TEST_F(AppTest, ANewKeyMayMiss) {
  Field fields[] = {*FindField("UseDcm"), *FindField("MaxDiff"), *FindField("DistDiff")};
  for (Field& field : fields) field.mayMiss = true;
  OutputFile(file).Write(std::string_view("[Main]\r\nDistDiff=\r\n"));
  session.settings.UseDcm = false;
  session.settings.MaxDiff = "7";
  EXPECT_FALSE(LoadSettings(session, file, fields));
  EXPECT_TRUE(session.settings.UseDcm);
  EXPECT_EQ(session.settings.MaxDiff, "300");
  EXPECT_EQ(session.settings.DistDiff, "");
}

TEST_F(AppTest, ValuesReachTheFieldsUpToAFault) {
  const struct {
    Texts stored, held;
    std::string_view faultAt = {};
    int fault = 0;
  } cases[] = {
      {{{"MaxProc", "123"}, {"DepthDiff", "1,5"}, {"UseDcm", " 0"}, {"EhoSens", "-100"}, {"UseBeep", "2"}},
       {{"MaxProc", "123"}, {"DepthDiff", "1,5"}, {"UseDcm", "0"}, {"EhoSens", "-100"}, {"UseBeep", "1"}}},
      {{{"ViewOzi", "1"}, {"UseRad", "1"}, {"UseEho", "5"}},
       {{"ViewOzi", "0"}, {"UseRad", "0"}, {"UseTyp", "2"}}},
      // Cropping clears the pictures, and the later lines have the last word.
      {{{"MakeCut", "1"}, {"SaveGraf", "1"}}, {{"MakeCut", "1"}, {"SaveGraf", "1"}, {"MakeGraf", "1"}}},
      {{{"SaveGraf", "1"}, {"MakeGraf", "0"}}, {{"SaveGraf", "0"}, {"MakeGraf", "0"}}},
      {{{"MaxDiff", "7"}, {"HideCut", "1"}, {"UseBeep", ""}, {"UseUTM", "1"}, {"DefLang", "DEU"}},
       {{"MaxDiff", "7"}, {"HideCut", "1"}, {"UseBeep", "0"}, {"UseUTM", "0"}, {"boxLang", ""}},
       "UseBeep",
       13},
      {{{"UseBeep", "3"}}, {}, "UseBeep", 380},
      {{{"UseBeep", "40000"}}, {}, "UseBeep", 6},
      {{{"EhoSens", "51"}}, {}, "EhoSens", 380},
  };
  for (const auto& oneCase : cases) {
    Store(oneCase.stored);
    const std::string& first = oneCase.stored[0].second;
    Session fresh(window);
    const auto fault = LoadSettings(fresh, file);
    EXPECT_EQ(fault ? fault->key : "", oneCase.faultAt) << first;
    EXPECT_EQ(fault ? fault->fault.Number() : 0, oneCase.fault) << first;
    for (const auto& [name, text] : oneCase.held)
      EXPECT_EQ(FieldText(fresh.settings, *FindField(name)), text) << first << ": " << name;
  }
}

}  // namespace
}  // namespace sondrix
