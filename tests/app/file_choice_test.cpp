#include "app/file_choice.h"

#include "core/code_page.h"
#include "core/fault.h"
#include "core/files.h"
#include "test_window.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sondrix {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(FileChoice, EveryCommaSeparatesTwoEntries) {
  const struct {
    std::string_view text;
    Pairs filters;
  } cases[] = {
      {"", {{" ", "*.*"}}},
      {MessagesOf(LangEnglish)->FilterSource,
       {{"File CSV/LOG/TXT or SL2/SL3", "*.CSV;*.LOG;*.TXT;*.SL2;*.SL3;*.MP"}}},
      {"a,*.a,b,*.b;*.c", {{"a", "*.a"}, {"b", "*.b;*.c"}}},
      {"a,*.a,b", {{"a", "*.a"}, {"b", "*.*"}}},
  };
  for (const auto& oneCase : cases) {
    Pairs filters;
    for (const FileFilter& filter : ParseFilters(oneCase.text)) {
      filters.emplace_back(filter.description, filter.patterns);
    }
    EXPECT_EQ(filters, oneCase.filters) << oneCase.text;
  }
}

class DialogTest : public testing::Test {
 protected:
  DialogTest() {
    ApplyLanguage(session, LangEnglish);
    dialogs.askFile = [this](const auto& initial, const auto&, const auto& title) {
      asked = {initial, title};
      return Answer();
    };
    dialogs.askFolder = [this](const auto& start, const auto& title) -> std::optional<std::string> {
      asked = {start, title};
      const std::string folder = Answer();
      return folder.empty() ? std::nullopt : std::optional(folder);
    };
    dialogs.shellOpen = [this](const std::string& path) {
      asked = {path};
      return shellCode;
    };
  }
  std::string Answer() const {
    if (fails) throw Fault(FaultNumber::DeviceIo);
    return answer;
  }

  FileDialogs dialogs;
  std::vector<std::string> asked;
  std::string answer;
  bool fails = false;
  int shellCode = 42;
  TestWindow window;
  Session session{window};
};

TEST_F(DialogTest, AChosenPathHoldsASeparator) {
  const struct {
    std::string initial, answer, asked, result;
  } cases[] = {
      {"", "/lake/a b.sl2", "", "/lake/a b.sl2"},
      {"  x.sl2 ", "", "x.sl2", ""},
      {"", "name.sl2", "", ""},
      {"", std::string("/a\0/b", 5), "", "/a"},
      {"", std::string("\0/b", 3), "", ""},
      {std::string(300, 'x'), "/a", std::string(255, 'x'), "/a"},
  };
  for (const auto& oneCase : cases) {
    answer = oneCase.answer;
    EXPECT_EQ(OpenDialog(dialogs, window, oneCase.initial, ""), oneCase.result) << oneCase.answer;
    EXPECT_EQ(asked, (std::vector<std::string>{oneCase.asked, "Выберите исходный файл:"}));
  }
  std::string letters;
  for (int i = 0; i < 256; ++i) letters += "я";
  OpenDialog(dialogs, window, letters, "");
  EXPECT_EQ(CharacterCount(asked[0]), 255u);
}

TEST_F(DialogTest, ACancelClearsTheSourceAndKeepsTheFolder) {
  answer = "/lake/a.sl2";
  SourceClick(session, dialogs);
  EXPECT_EQ(session.settings.Source, "/lake/a.sl2");
  answer.clear();
  SourceClick(session, dialogs);
  EXPECT_EQ(session.settings.Source, "");

  TargetPathClick(session, dialogs, "/program");
  EXPECT_EQ(asked, (std::vector<std::string>{"/program", "Select target folder:"}));
  EXPECT_EQ(session.settings.TargetPath, "/program");
  answer = "/maps";
  TargetPathClick(session, dialogs, "/program");
  EXPECT_EQ(session.settings.TargetPath, "/maps");
  answer.clear();
  TargetPathClick(session, dialogs, "/program");
  EXPECT_EQ(asked[0], "/maps");
  EXPECT_EQ(session.settings.TargetPath, "/maps");
  EXPECT_EQ(window.shown.back(), "TargetPath");
  EXPECT_EQ(window.att, "");
}

TEST_F(DialogTest, FaultsHaveTheirOwnLines) {
  fails = true;
  session.settings.Source = "/old";
  SourceClick(session, dialogs);
  EXPECT_EQ(session.settings.Source, "");
  EXPECT_EQ(window.att, "ошибка OpenDialog: 57. Device I/O error");
  EXPECT_EQ(FolderSel(dialogs, window, "/start", "title"), "/start");
  EXPECT_EQ(window.att, "ошибка FolderSel: 57. Device I/O error");

  window.att.clear();
  ShellOpen(dialogs, window, "/a.txt");
  EXPECT_EQ(window.att, "");
  shellCode = NoAssociation;
  ShellOpen(dialogs, window, "/a.txt");
  EXPECT_EQ(asked[0], "/a.txt");
  EXPECT_EQ(window.att, "неизвестный тип файла...");
}

TEST(FileChoice, OnlyAPathOnADriveCounts) {
  const std::string s(1, PathSeparator);
  const struct {
    std::string address, result;
  } cases[] = {
      {"C:" + s + "Users", "C:" + s + "Users" + s},
      {" C:" + s + " ", "C:" + s},
      {"C:", "C:" + s},
      {"Libraries", s + "prog" + s},
      {"", s + "prog" + s},
      {":x", s + "prog" + s},
  };
  for (const auto& oneCase : cases) {
    EXPECT_EQ(OpenPathOf(oneCase.address, s + "prog"), oneCase.result) << oneCase.address;
  }
  EXPECT_EQ(OpenPathOf("", s), s);
  const std::string written = testing::TempDir();
  EXPECT_EQ(OutputFolder(written, "/home"), written);
  EXPECT_EQ(OutputFolder(written + "none", "/home"), "/home");
}

}  // namespace
}  // namespace sondrix
