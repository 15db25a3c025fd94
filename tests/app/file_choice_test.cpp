#include "app/file_choice.h"

#include "app/interrupt.h"
#include "app/places.h"
#include "core/fault.h"
#include "core/files.h"
#include "core/text.h"
#include "jobs/job_table.h"
#include "temporary_folder.h"
#include "test_window.h"

#include <algorithm>
#include <csignal>

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
  // An answer, the source from it, the folder that is asked for, and the target from it.
  const std::tuple<std::string, const char*, const char*, const char*> clicks[] = {
      {"", "", "/program", "/program"},
      {"/maps", "/maps", "/program", "/maps"},
      {"name", "", "/maps", "name"},
      {std::string("/a\0/b", 5), "/a", "name", "/a"},
      {"", "", "/a", "/a"}};
  for (const auto& [text, source, askedFolder, target] : clicks) {
    answer = text;
    SourceClick(session, dialogs);
    TargetPathClick(session, dialogs, "/program");
    EXPECT_EQ(session.settings.Source + '|' + asked + '|' + session.settings.TargetPath,
              source + ('|' + (askedFolder + ('|' + std::string(target)))));
  }
  EXPECT_EQ(std::vector(window.shown.begin(), window.shown.begin() + 2),
            (std::vector<std::string>{"Source", "TargetPath"}));
  session.settings.Source = "/old";
  dialogs.askFile = [&](const std::string& start, auto&&...) -> std::string {
    asked = start;
    throw Fault(FaultNumber::DeviceIo);
  };
  dialogs.askFolder = [](auto&&...) -> std::optional<std::string> { throw Fault(FaultNumber::DeviceIo); };
  SourceClick(session, dialogs);
  EXPECT_EQ(session.settings.Source, "");
  EXPECT_EQ(window.att, "ошибка OpenDialog: 57. Device I/O error");
  EXPECT_EQ(FolderSel(dialogs, window, "/kept", ""), "/kept");
  EXPECT_EQ(window.att, "ошибка FolderSel: 57. Device I/O error");
  OpenDialog(dialogs, window, "  " + std::string(300, 'x'), "");
  EXPECT_EQ(asked, std::string(255, 'x'));
  dialogs.shellOpen = [](auto&) { return 31; };
  ShellOpen(dialogs, window, "/picture");
  EXPECT_EQ(window.att, "неизвестный тип файла...");
}

TEST(FileChoice, TheDialogShowsEveryKindOfSourceInEveryLanguage) {
  for (const LangId language : {LangEnglish, LangRussian, LangGerman}) {
    const auto filters = ParseFilters(MessagesOf(language)->FilterSource);
    ASSERT_EQ(filters.size(), 1u);
    std::string patterns = filters[0].patterns + ";";
    for (char& c : patterns) c = Lower(c);
    for (const JobRow& job : Jobs())
      EXPECT_NE(patterns.find("*." + std::string(job.extension) + ";"), std::string::npos) << patterns;
  }
}

TEST(FileChoice, ListsAndFolders) {
  using Row = std::pair<const char*, const char*>;
  for (const auto& [text, listed] : {Row{"a,*.a,b,*.b;*.c", "a:*.a b:*.b;*.c "}, Row{"", " :*.* "},
                                     Row{"a", "a:*.* "}, Row{"a,*.a,b", "a:*.a b:*.* "}, Row{"a,", "a: "}}) {
    std::string found;
    for (const FileFilter& filter : ParseFilters(text))
      found += filter.description + ":" + filter.patterns + " ";
    EXPECT_EQ(found, listed);
  }
  const std::string s(1, PathSeparator);
  EXPECT_EQ(OpenPathOf(" C:" + s + "Users ", s + "prog"), "C:" + s + "Users" + s);
  EXPECT_EQ(OpenPathOf(":x", s + "prog"), s + "prog" + s);
  EXPECT_EQ(OpenPathOf("ж:", s + "prog"), "ж:" + s);
  EXPECT_EQ(OutputFolder(testing::TempDir(), "/home"), testing::TempDir());
  EXPECT_EQ(OutputFolder(testing::TempDir() + "none", "/home"), "/home");
}

TEST(Places, FilesAndTheirPlaces) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder.Path("below/c.sl2"));
  for (const char* name : {"b", "a", "below/d"}) folder.Write(name, "text");
  for (const bool isDeep : {false, true}) {
    std::string found;
    for (const std::string& file : FilesIn(folder.Path(""), isDeep))
      found += file.substr(folder.Path("").size()) + " ";
    std::ranges::replace(found, '\\', '/');
    EXPECT_EQ(found, isDeep ? "a b below/d " : "a b ");
  }
  EXPECT_TRUE(FilesIn(folder.Path("none"), true).empty());
  EXPECT_EQ(PlaceOf(folder.Path("below/../a")), PlaceOf(folder.Path("./a")));
  EXPECT_NE(PlaceOf(folder.Path("a")), PlaceOf(folder.Path("b")));
  EXPECT_EQ(LengthOfFile(folder.Path("a")) + LengthOfFile(folder.Path("none")), 4);
}

// A signal that was ignored stays so; behind the guard each is handled as before it.
TEST(Interrupt, SignalsAreNotedAndGivenBack) {
  for (const auto before : {SIG_IGN, SIG_DFL}) {
    const auto outer = std::signal(SIGINT, before);
    {
      const InterruptGuard guard;
      for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Interrupted(), i > 0 && before == SIG_DFL);
        std::raise(SIGINT);
        // cppcheck-suppress unreachableCode ; raise comes back
        EXPECT_EQ(Interrupted(), before == SIG_DFL);
      }
    }
    EXPECT_EQ(std::signal(SIGINT, outer), before);
  }
}

}  // namespace
}  // namespace sondrix
