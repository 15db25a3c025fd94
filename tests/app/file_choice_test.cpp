#include "app/file_choice.h"

#include "core/fault.h"
#include "core/files.h"
#include "jobs/job_table.h"
#include "test_window.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace sondrix {
namespace {

TEST(FileChoice, TheFieldsTakeWhatADialogGives) {
  TestWindow window;
  Session session(window);
  std::string answer, asked;
  FileDialogs dialogs;
  dialogs.askFile = [&](auto&&...) { return answer; };
  dialogs.askFolder = [&](const std::string& start, auto&) {
    asked = start;
    return answer.empty() ? std::nullopt : std::optional(answer);
  };
  const struct {
    std::string answer, source, askedFolder, targetPath;
  } cases[] = {
      {"", "", "/program", "/program"},
      {"/maps", "/maps", "/program", "/maps"},
      {"name", "", "/maps", "name"},
      {std::string("/a\0/b", 5), "/a", "name", "/a"},
      {"", "", "/a", "/a"},
  };
  for (const auto& click : cases) {
    answer = click.answer;
    SourceClick(session, dialogs);
    TargetPathClick(session, dialogs, "/program");
    EXPECT_EQ(session.settings.Source, click.source);
    EXPECT_EQ(asked, click.askedFolder);
    EXPECT_EQ(session.settings.TargetPath, click.targetPath);
  }
  session.settings.Source = "/old";
  dialogs.askFile = [](auto&&...) -> std::string { throw Fault(FaultNumber::DeviceIo); };
  SourceClick(session, dialogs);
  EXPECT_EQ(session.settings.Source, "");
  EXPECT_EQ(window.att, "ошибка OpenDialog: 57. Device I/O error");
  dialogs.shellOpen = [](auto&) { return NoAssociation; };
  ShellOpen(dialogs, window, "/picture");
  EXPECT_EQ(window.att, "неизвестный тип файла...");
}

TEST(FileChoice, TheDialogShowsEveryKindOfSourceInEveryLanguage) {
  for (const LangId language : {LangEnglish, LangRussian, LangGerman}) {
    const auto filters = ParseFilters(MessagesOf(language)->FilterSource);
    ASSERT_EQ(filters.size(), 1u);
    const std::string patterns = filters[0].patterns + ";";
    for (const JobRow& job : Jobs()) {
      std::string pattern = "*." + std::string(job.extension) + ";";
      std::transform(pattern.begin(), pattern.end(), pattern.begin(),
                     [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
      EXPECT_NE(patterns.find(pattern), std::string::npos) << patterns << " lacks " << pattern;
    }
  }
}

TEST(FileChoice, ListsAndFolders) {
  const std::vector<FileFilter> filters = ParseFilters("a,*.a,b,*.b;*.c");
  ASSERT_EQ(filters.size(), 2u);
  EXPECT_EQ(filters[1].description + filters[1].patterns, "b*.b;*.c");
  const std::string s(1, PathSeparator);
  EXPECT_EQ(OpenPathOf(" C:" + s + "Users ", s + "prog"), "C:" + s + "Users" + s);
  EXPECT_EQ(OpenPathOf(":x", s + "prog"), s + "prog" + s);
  EXPECT_EQ(OutputFolder(testing::TempDir(), "/home"), testing::TempDir());
  EXPECT_EQ(OutputFolder(testing::TempDir() + "none", "/home"), "/home");
}

}  // namespace
}  // namespace sondrix
