#include "app/help_text.h"

#include "core/code_page.h"
#include "core/files.h"
#include "test_window.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sondrix {
namespace {

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find("\r\n", at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 2;
  }
  return lines;
}

TEST(HelpText, TopicsAgreeInAllLanguages) {
  const auto shapeOf = [](LangId id) {
    std::string shape;  // dates and the starts of the list's lines, in their order
    bool isHistory = false;
    for (const std::string& line : LinesOf(HelpTextOf(id))) {
      isHistory = isHistory || line == "12.05.13";
      if (line.size() == 8 && line[2] == '.' && line[5] == '.') shape += line;
      if (line.starts_with("* ")) shape += '*';
      if (line.starts_with("- ")) shape += '-';
    }
    return shape;
  };
  const std::string english = shapeOf(LangEnglish);
  EXPECT_EQ(std::count(english.begin(), english.end(), '.'), 26);
  EXPECT_TRUE(english.starts_with("*-------*--12.05.13------24.10.13")) << english;
  EXPECT_EQ(shapeOf(LangRussian), english);
  EXPECT_EQ(shapeOf(LangGerman), english);
  EXPECT_EQ(HelpTextOf(0x422), "");
}

TEST(HelpText, EachSurvivesTheWayIntoAFile) {
  const struct {
    LangId id;
    const char *first, *contains, *lacks;
  } cases[] = {
      {LangEnglish, "Converter CSV data from sounders Sondrix v21", "* what already works:\r\n", "{"},
      {LangRussian, "Конвертер CSV-данных с эхолотов Sondrix v21", "500 и более", "{"},
      {LangGerman, "Konverter für CSV-Daten von Echoloten Sondrix v21", "\r\nHinweis:\r\n", ".LOG"},
  };
  for (const auto& oneCase : cases) {
    const std::string text = HelpTextOf(oneCase.id);
    EXPECT_EQ(LinesOf(text)[0], oneCase.first);
    EXPECT_NE(text.find(oneCase.contains), std::string::npos) << oneCase.first;
    EXPECT_EQ(text.find(oneCase.lacks), std::string::npos) << oneCase.first;
    EXPECT_EQ(text.find('?'), std::string::npos) << oneCase.first;
    EXPECT_EQ(ToCodePage(text).find('?'), std::string::npos) << oneCase.first;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), std::count(text.begin(), text.end(), '\r'));
  }
}

class HelpTest : public testing::Test {
 protected:
  HelpTest() {
    std::filesystem::remove_all(PathOf(folder));
    std::filesystem::create_directories(PathOf(folder));
    dialogs.shellOpen = [this](const std::string& path) { return opened.push_back(path), 42; };
  }
  ~HelpTest() override { std::filesystem::remove_all(PathOf(folder)); }

  std::string folder =
      testing::TempDir() + "sondrix_" + testing::UnitTest::GetInstance()->current_test_info()->name();
  std::string file = folder + PathSeparator + "sondrix.txt";
  HelpReport report{{10, 0}, 0x409, 0xF419, "Sans", 204};
  FileDialogs dialogs;
  std::vector<std::string> opened;
  TestWindow window;
  Session session{window};
};

TEST_F(HelpTest, TheFileIsReplacedAndOpened) {
  const std::string lines =
      "\r\n\r\n\r\nWindows version: 10.0\r\nSystem/User lang: 1033/-3047\r\nSoft Font/Charset: Sans/204\r\n";
  OutputFile(file).Write(std::string_view("old"));
  session.langId = 0x422;
  ShowHelp(session, file, report, dialogs);
  EXPECT_EQ(ReadWhole(file), lines);
  session.langId = LangGerman;
  ShowHelp(session, file, report, dialogs);
  EXPECT_EQ(ReadWhole(file), ToCodePage(HelpTextOf(LangGerman)) + lines);
  EXPECT_EQ(opened, std::vector<std::string>(2, file));
  EXPECT_EQ(window.att, "");
}

TEST_F(HelpTest, FaultsEndInTheLogLine) {
  std::filesystem::create_directories(PathOf(file));
  ShowHelp(session, file, report, dialogs);
  EXPECT_EQ(window.att, " ! error btnHelp_Click: 75. Path/File access error");
  EXPECT_TRUE(opened.empty());
  // A folder that can't be written is for the viewer to report.
  OutputFile(folder + "/plain").Close();
  ShowHelp(session, folder + "/plain/sondrix.txt", report, dialogs);
  EXPECT_TRUE(window.att.starts_with("ошибка WriteF: ")) << window.att;
  EXPECT_EQ(opened.size(), 1u);
}

}  // namespace
}  // namespace sondrix
