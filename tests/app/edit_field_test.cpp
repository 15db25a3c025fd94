#include "app/edit_field.h"

#include "test_window.h"

#include <gtest/gtest.h>
#include <string>

namespace sondrix {
namespace {

TEST(EditField, ActsAsTheUserWould) {
  using enum EditResult;
  const struct {
    const char *name, *value, *boxes;  // the last: MakeCut, MakeGraf, SaveGraf behind the edit
    EditResult result = Done;
  } edits[] = {
      {"DistDiff", "2,5", "010"},
      {"MaxProc", "99", "010"},
      {"MaxProc", "100", "010", BadValue},
      {"SaveGraf", "1", "011"},
      // Cropping switches the pictures off, and these can be switched on again.
      {"MakeCut", "1", "100"},
      {"SaveGraf", "1", "100", Disabled},
      {"MakeGraf", "1", "110"},
      {"MakeCut", "1", "110"},
      {"MakeCut", "0", "010"},
      {"UseDcm", "2", "010", BadValue},
      {"EhoSens", "-100", "010"},
      {"EhoSens", "-101", "010", BadValue},
      {"EhoSens", "50", "010"},
      {"EhoSens", "51", "010", BadValue},
      {"EhoSens", "1.5", "010", BadValue},
      {"UseTyp", "0", "010"},
      {"UseTyp", "1", "010", BadValue},
      {"boxLang", "DEU", "010"},
      {"boxLang", "deu", "010", BadValue},
  };
  TestWindow window;
  Session session(window);
  const Settings& settings = session.settings;
  session.state.KnownSamples = 7;
  for (const auto& [name, value, boxes, result] : edits) {
    const Field& field = *FindField(name);
    const std::string held = result == Done ? value : FieldText(settings, field);
    EXPECT_EQ(EditField(session, name, value), result) << name << "=" << value;
    EXPECT_EQ(FieldText(settings, field), held) << name << "=" << value;
    std::string behind;
    for (const bool box : {settings.MakeCut, settings.MakeGraf, settings.SaveGraf}) behind += box ? '1' : '0';
    EXPECT_EQ(behind, boxes) << name << "=" << value;
  }
  EXPECT_EQ(session.state.SelectedChannel, 0);
  EXPECT_EQ(session.state.ResyncMarker, 0x07800000u);
  EXPECT_EQ(session.state.KnownSamples, 0);
  EXPECT_EQ(session.run.messages.MsgDone, " * Ausgeführt");
  EXPECT_EQ(EditField(session, "usedcm", "0"), NoField);
}

}  // namespace
}  // namespace sondrix
