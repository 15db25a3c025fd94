#include "app/help_text.h"

#include "app/app_test.h"
#include "core/code_page.h"

namespace sondrix {
namespace {

TEST_F(AppTest, TheHelpFileIsReplacedAndOpened) {
  const HelpReport report{{10, 0}, 0x409, 0xF419, "Sans", 204};
  const std::string lines =
      "\r\n\r\n\r\nWindows version: 10.0\r\nSystem/User lang: 1033/-3047\r\nSoft Font/Charset: Sans/204\r\n";
  int opened = 0;
  FileDialogs dialogs;
  dialogs.shellOpen = [&](const std::string&) { return ++opened, 42; };
  OutputFile(file).Write(std::string_view("old"));
  for (const LangId id : {0x422, LangRussian, LangEnglish, LangGerman}) {
    session.langId = id;
    ShowHelp(session, file, report, dialogs);
    const std::string written = ReadWhole(file);
    EXPECT_EQ(written, ToCodePage(HelpTextOf(id)) + lines);
    EXPECT_EQ(written.size() > 3000 && written.find("\r\n\r\n") < 2000, id != 0x422) << written;
    // Letters that such a file can't hold, and the place of the version.
    EXPECT_EQ(written.find_first_of("?{"), std::string::npos) << id;
  }
  EXPECT_EQ(window.att, "");
  ShowHelp(session, folder, report, dialogs);
  EXPECT_EQ(window.att, " ! error btnHelp_Click: 75. Path/File access error");
  EXPECT_EQ(opened, 4);
  // A folder that can't be written is for the viewer to report.
  ShowHelp(session, file + "/sondrix.txt", report, dialogs);
  EXPECT_TRUE(window.att.starts_with("ошибка WriteF: ")) << window.att;
  EXPECT_EQ(opened, 5);
  session.outputs.Begin(file);
  ShowHelp(session, file, report, dialogs);
  EXPECT_EQ(window.att, " ! error btnHelp_Click: 55. File already open");
  EXPECT_TRUE(std::filesystem::exists(file)) << "a run reads it";
}

}  // namespace
}  // namespace sondrix
