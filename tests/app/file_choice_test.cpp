#include "app/file_choice.h"

#include "core/fault.h"
#include "core/files.h"
#include "test_window.h"

#include <gtest/gtest.h>
#include <string>

namespace sondrix {
namespace {

class FileChoice : public testing::Test {
 protected:
  FileChoice() {
    dialogs.askFile = [this](const auto& initial, const auto& filters, const auto&) {
      asked = initial;
      for (const FileFilter& filter : filters) asked += "|" + filter.description + "|" + filter.patterns;
      return answer;
    };
    dialogs.askFolder = [this](const auto& start, const auto&) -> std::optional<std::string> {
      asked = start;
      return answer.empty() ? std::nullopt : std::optional(answer);
    };
    dialogs.shellOpen = [this](const std::string& path) { return path == "/known.txt" ? 42 : NoAssociation; };
  }

  FileDialogs dialogs;
  std::string asked, answer;
  TestWindow window;
  Session session{window};
};

TEST_F(FileChoice, AChosenPathHoldsASeparator) {
  std::string letters;
  for (int i = 0; i < 256; ++i) letters += "я";
  const struct {
    std::string initial, filter, answer, asked, result;
  } cases[] = {
      {"", "", "/lake/a b.sl2", "| |*.*", "/lake/a b.sl2"},
      {"  x.sl2 ", "a,*.a,b,*.b;*.c", "name.sl2", "x.sl2|a|*.a|b|*.b;*.c", ""},
      {"", "a,*.a,b", std::string("/a\0/b", 5), "|a|*.a|b|*.*", "/a"},
      {letters, "", std::string("\0/b", 3), letters.substr(2) + "| |*.*", ""},
  };
  for (const auto& oneCase : cases) {
    answer = oneCase.answer;
    EXPECT_EQ(OpenDialog(dialogs, window, oneCase.initial, oneCase.filter), oneCase.result) << answer;
    EXPECT_EQ(asked, oneCase.asked);
  }
}

TEST_F(FileChoice, ACancelKeepsTheFolder) {
  const struct {
    const char *answer, *asked, *target;
  } clicks[] = {{"", "/program", "/program"}, {"/maps", "/program", "/maps"}, {"", "/maps", "/maps"}};
  for (const auto& click : clicks) {
    answer = click.answer;
    TargetPathClick(session, dialogs, "/program");
    EXPECT_EQ(asked, click.asked);
    EXPECT_EQ(session.settings.TargetPath, click.target);
  }
}

TEST_F(FileChoice, FaultsHaveTheirOwnLines) {
  const auto fail = [](auto&&...) -> std::string { throw Fault(FaultNumber::DeviceIo); };
  dialogs.askFile = fail;
  dialogs.askFolder = fail;
  session.settings.Source = "/old";
  SourceClick(session, dialogs);
  EXPECT_EQ(session.settings.Source, "");
  EXPECT_EQ(window.att, "ошибка OpenDialog: 57. Device I/O error");
  EXPECT_EQ(FolderSel(dialogs, window, "/start", "title"), "/start");
  EXPECT_EQ(window.att, "ошибка FolderSel: 57. Device I/O error");
  window.att.clear();
  ShellOpen(dialogs, window, "/known.txt");
  EXPECT_EQ(window.att, "");
  ShellOpen(dialogs, window, "/other");
  EXPECT_EQ(window.att, "неизвестный тип файла...");
}

TEST_F(FileChoice, OnlyAPathOnADriveCounts) {
  const std::string s(1, PathSeparator);
  const struct {
    std::string address, result;
  } cases[] = {{" C:" + s + "Users ", "C:" + s + "Users" + s}, {":x", s + "prog" + s}};
  for (const auto& oneCase : cases) {
    EXPECT_EQ(OpenPathOf(oneCase.address, s + "prog"), oneCase.result) << oneCase.address;
  }
  EXPECT_EQ(OutputFolder(testing::TempDir(), "/home"), testing::TempDir());
  EXPECT_EQ(OutputFolder(testing::TempDir() + "none", "/home"), "/home");
}

}  // namespace
}  // namespace sondrix
