#include "app/help_text.h"

#include "app/app_test.h"
#include "core/code_page.h"

#include <algorithm>
#include <regex>

namespace sondrix {
namespace {

// Headings, items and dates of the history, in their order.
std::string TopicsOf(const std::string& text) {
  static const std::regex start(R"((^|\n)([*-] |\d\d\.\d\d\.\d\d\r))");
  std::string topics;
  for (std::sregex_iterator at(text.begin(), text.end(), start), end; at != end; ++at) topics += at->str(2);
  return topics;
}

TEST(HelpText, TopicsAgreeAndSurviveTheWayIntoAFile) {
  const std::string topics = TopicsOf(HelpTextOf(LangEnglish));
  EXPECT_EQ(std::count(topics.begin(), topics.end(), '.'), 26);
  for (const LangId id : {LangRussian, LangEnglish, LangGerman}) {
    const std::string text = HelpTextOf(id);
    EXPECT_EQ(TopicsOf(text), topics) << id;
    EXPECT_EQ(text.find('{'), std::string::npos) << id;
    EXPECT_EQ(text.find('?'), std::string::npos) << id;
    EXPECT_EQ(ToCodePage(text).find('?'), std::string::npos) << id;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), std::count(text.begin(), text.end(), '\r'));
  }
}

TEST_F(AppTest, TheHelpFileIsReplacedAndOpened) {
  const HelpReport report{{10, 0}, 0x409, 0xF419, "Sans", 204};
  const std::string lines =
      "\r\n\r\n\r\nWindows version: 10.0\r\nSystem/User lang: 1033/-3047\r\nSoft Font/Charset: Sans/204\r\n";
  int opened = 0;
  FileDialogs dialogs;
  dialogs.shellOpen = [&](const std::string&) { return ++opened, 42; };
  OutputFile(file).Write(std::string_view("old"));
  for (const LangId id : {0x422, LangGerman}) {
    session.langId = id;
    ShowHelp(session, file, report, dialogs);
    EXPECT_EQ(ReadWhole(file), ToCodePage(HelpTextOf(id)) + lines);
  }
  EXPECT_EQ(window.att, "");
  ShowHelp(session, folder, report, dialogs);
  EXPECT_EQ(window.att, " ! error btnHelp_Click: 75. Path/File access error");
  EXPECT_EQ(opened, 2);
  // A folder that can't be written is for the viewer to report.
  ShowHelp(session, file + "/sondrix.txt", report, dialogs);
  EXPECT_TRUE(window.att.starts_with("ошибка WriteF: ")) << window.att;
  EXPECT_EQ(opened, 3);
}

}  // namespace
}  // namespace sondrix
