#include "app/edit_field.h"

#include "app/session.h"
#include "test_window.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(EditField, TakesWhatAUserCouldSet) {
  const auto done = EditResult::Done, bad = EditResult::BadValue;
  const std::tuple<const char*, const char*, EditResult, const char*> rows[] = {
      {"MaxProc", "ж5", done, "ж5"}, {"MaxProc", "100", bad, "80"},     {"UseUTM", "1", done, "1"},
      {"UseUTM", "2", bad, "0"},     {"EhoSens", "-100", done, "-100"}, {"EhoSens", "50", done, "50"},
      {"EhoSens", "51", bad, "0"},   {"EhoSens", "-101", bad, "0"},     {"EhoSens", "1x", bad, "0"},
      {"UseTyp", "5", done, "5"},    {"UseTyp", "1", bad, "2"},         {"boxLang", "DEU", done, "DEU"},
      {"boxLang", "deu", bad, ""},   {"MakeGraf", "0", done, "0"},      {"ViewOzi", "1", done, "0"},
      {"Source", "a b", done, "a b"}};
  for (const auto& [name, value, result, held] : rows) {
    TestWindow window;
    Session session(window);
    EXPECT_EQ(EditField(session, name, value), result) << name << value;
    EXPECT_EQ(FieldText(session.settings, *FindField(name)), held) << name << value;
    EXPECT_EQ(!window.shown.empty() && window.shown.back() == name, result == done) << name << value;
    EXPECT_FALSE(AllowedValues(*FindField(name)).empty());
    if (result != done) continue;
    EXPECT_EQ(session.state.SelectedChannel,
              *value == '5' && *name == 'U' ? Channel::Sidescan : Channel::Downscan);
    EXPECT_EQ(session.langId == LangGerman, *name == 'b') << name;
    EXPECT_EQ(EditField(session, "SaveGraf", "1"), session.settings.MakeGraf ? done : EditResult::Disabled);
  }
  TestWindow window;
  Session session(window);
  EXPECT_EQ(EditField(session, "Sorce", ""), EditResult::NoField);
}

}  // namespace
}  // namespace sondrix
