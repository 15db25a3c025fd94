#include "app/edit_field.h"

#include "test_window.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sondrix {
namespace {

struct Edit {
  const char* name;
  const char* value;
  EditResult result = EditResult::Done;
};

// What the fields hold after the edits, as "Name=text" of those named.
struct Case {
  std::vector<Edit> edits;
  std::vector<std::pair<const char*, const char*>> held;
};

TEST(EditField, ActsAsTheUserWould) {
  using enum EditResult;
  const Case cases[] = {
      {{{"DistDiff", "2,5"}, {"Source", ""}}, {{"DistDiff", "2,5"}, {"Source", ""}}},
      {{{"MaxProc", "99"}, {"MaxProc", "100", BadValue}}, {{"MaxProc", "99"}}},
      // Cropping switches the pictures off, and these can be switched on again.
      {{{"SaveGraf", "1"}, {"MakeCut", "1"}}, {{"MakeCut", "1"}, {"MakeGraf", "0"}, {"SaveGraf", "0"}}},
      {{{"MakeCut", "1"}, {"MakeGraf", "1"}}, {{"MakeCut", "1"}, {"MakeGraf", "1"}}},
      {{{"MakeCut", "1"}, {"MakeGraf", "1"}, {"MakeCut", "1"}}, {{"MakeGraf", "1"}}},
      {{{"MakeCut", "1"}, {"MakeCut", "0"}}, {{"MakeGraf", "0"}}},
      {{{"MakeGraf", "0"}, {"SaveGraf", "1", Disabled}, {"SaveGraf", "0"}}, {{"SaveGraf", "0"}}},
      {{{"UseDcm", "2", BadValue}, {"UseDcm", "", BadValue}, {"UseDcm", "yes", BadValue}}, {{"UseDcm", "1"}}},
      {{{"EhoSens", "-100"}, {"EhoSens", "-101", BadValue}, {"EhoSens", "51", BadValue}},
       {{"EhoSens", "-100"}}},
      {{{"EhoSens", "50"}, {"EhoSens", "1.5", BadValue}, {"EhoSens", "", BadValue}}, {{"EhoSens", "50"}}},
      {{{"UseTyp", "9"}, {"UseTyp", "1", BadValue}, {"UseTyp", "02x", BadValue}}, {{"UseTyp", "9"}}},
      {{{"boxLang", "DEU"}, {"boxLang", "deu", BadValue}, {"boxLang", "", BadValue}}, {{"boxLang", "DEU"}}},
      {{{"usedcm", "0", NoField}, {"", "0", NoField}, {"Att", "x", NoField}}, {{"UseDcm", "1"}}},
      {{{"ViewOzi", "1"}}, {{"ViewOzi", "0"}}},  // without a library
  };
  for (const Case& oneCase : cases) {
    TestWindow window;
    Session session(window);
    for (const Edit& edit : oneCase.edits) {
      EXPECT_EQ(EditField(session, edit.name, edit.value), edit.result) << edit.name << "=" << edit.value;
    }
    for (const auto& [name, text] : oneCase.held) {
      EXPECT_EQ(FieldText(session.settings, *FindField(name)), text) << oneCase.edits[0].name << ": " << name;
    }
  }
}

TEST(EditField, ChannelAndLanguageReachTheRun) {
  TestWindow window;
  Session session(window);
  session.state.KnownSamples = 7;
  EditField(session, "UseTyp", "0");
  EXPECT_EQ(session.state.SelectedChannel, 0);
  EXPECT_EQ(session.state.ResyncMarker, 0x07800000u);
  EXPECT_EQ(session.state.KnownSamples, 0);

  EditField(session, "boxLang", "RUS");
  EXPECT_EQ(session.langId, LangRussian);
  EXPECT_EQ(session.run.messages.MsgDone, " * выполнено");
  ApplyLanguage(session, 0x422);
  EXPECT_EQ(session.run.messages.MsgDone, " * выполнено");
}

}  // namespace
}  // namespace sondrix
