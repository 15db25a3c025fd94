#include "platform/platform.h"

#include "platform/file_system.h"
#include "platform/memory.h"
#include "platform/shared_library.h"
#include "temporary_folder.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sstream>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace sondrix {
namespace {

namespace fs = std::filesystem;

TEST(Platform, KnowsItsProgram) {
  EXPECT_EQ(ProgramStem(), "platform_test");
  EXPECT_TRUE(CanWriteFolder(ProgramFolder()));
  EXPECT_TRUE(fs::exists(fs::path(ProgramFolder()) / "CTestTestfile.cmake"));
  EXPECT_FALSE(CanWriteFolder(ProgramFolder() + "/none"));
  EXPECT_GT(SystemVersion().first, 0);
  const char* const arguments[] = {"program", "one", "two"};
  EXPECT_EQ(ProgramArguments(3, arguments), (std::vector<std::string>{"one", "two"}));
  EXPECT_TRUE(ProgramArguments(0, arguments).empty());
}

TEST(FileSystem, OpensSeeksAndTellsStates) {
  const TemporaryFolder folder;
  const fs::path path = folder.Path("file");
  const auto open = [&](OpenFor purpose, const fs::path& name) {
    std::error_code error = std::make_error_code(std::errc::io_error);  // is cleared
    std::FILE* const file = OpenFile(name, purpose, error);
    EXPECT_EQ(file == nullptr, bool(error));
    return std::pair(file, error);
  };
  EXPECT_EQ(open(OpenFor::Reading, path).second, std::errc::no_such_file_or_directory);
  for (const OpenFor purpose : {OpenFor::Making, OpenFor::Writing}) {
    const auto [file, error] = open(purpose, path);
    ASSERT_TRUE(file);
    PutText(file, "1234");
    EXPECT_TRUE(SeekTo(file, 1));
    PutText(file, "b");
    EXPECT_TRUE(FlushToDisk(file));
    EXPECT_FALSE(SeekTo(file, -1) || IsTerminal(file));
    std::error_code none = std::make_error_code(std::errc::io_error);
    const FileState state = StateOf(file, none);
    EXPECT_TRUE(!none && state.length == 4 && StateOf(path, none) == state && !none);
    EXPECT_NE(StateOf(fs::path(folder.Write("other", "1234")), none).id, state.id);
    std::fclose(file);
    EXPECT_EQ(folder.Read("file"), "1b34");
  }
  EXPECT_EQ(open(OpenFor::Making, path).second, std::errc::file_exists);
  for (const char* missing : {"none", "none/x", "file/x"}) {
    std::error_code error;
    StateOf(fs::path(folder.Path(missing)), error);
    EXPECT_EQ(error, std::errc::no_such_file_or_directory) << missing;
  }
  std::error_code error;
  EXPECT_EQ(ReplaceError(path), std::error_code());
  EXPECT_EQ(ReplaceError(folder.Path("none")), std::error_code());
  EXPECT_TRUE(!IsLink(path) && LinkTarget(path, error) == path && !error);
  WishLargePages(&error, sizeof error);
  EXPECT_FALSE(error);
}

// The recorder stands for the map program's library.
TEST(Platform, ALibraryIsTakenWholeAndByItsWholePath) {
  const TemporaryFolder folder;
  const fs::path file = folder.Path(LibraryFileName("Sondrix-Test"));
  fs::copy_file(RECORDER, file);
  EXPECT_TRUE(SharedLibrary(file.string()).Find("oziCloseApi", 0));
  EXPECT_FALSE(SharedLibrary(file.string()).Find("ozi", 0));
  for (const std::string& path : {file.filename().string(), folder.Path(""), file.string() + ".none"})
    EXPECT_FALSE(SharedLibrary(path).IsLoaded()) << path;
  // What is behind the first quarter may be for a debugger.
  for (const std::uintmax_t length : {fs::file_size(file) / 4, std::uintmax_t{64}, std::uintmax_t{0}}) {
    fs::resize_file(file, length);
    EXPECT_FALSE(SharedLibrary(file.string()).IsLoaded()) << length;
  }
}

#ifndef _WIN32
TEST(FileSystem, LinksErrorsAndPermissions) {
  const TemporaryFolder folder;
  const auto link = [&](const char* name, const char* target) {
    fs::create_symlink(target, folder.Path(name));
  };
  const fs::path file = folder.Write("file", "x");
  link("first", "second");
  link("second", "none");
  link("loop", "loop");
  std::error_code error;
  EXPECT_EQ(LinkTarget(folder.Path("first"), error), folder.Path("none"));
  EXPECT_FALSE(error);
  EXPECT_EQ(LinkTarget(folder.Path("loop"), error), folder.Path("loop"));
  EXPECT_EQ(error, std::errc::too_many_symbolic_link_levels);
  EXPECT_TRUE(IsLink(folder.Path("first")) && !IsLink(folder.Path("none")) && !IgnoresCaseOfNames());
  for (const OpenFor purpose : {OpenFor::Writing, OpenFor::Making})
    EXPECT_FALSE(OpenFile(folder.Path("second"), purpose, error)) << "a link isn't followed";
  EXPECT_EQ(ReplaceError(folder.Path("loop")), std::error_code());
  EXPECT_EQ(ReplaceError(folder.Path("file/x")), std::errc::not_a_directory);
  EXPECT_TRUE(IsQuotaUsedUp({EDQUOT, std::generic_category()}) &&
              !IsQuotaUsedUp({ENOSPC, std::generic_category()}));

  fs::permissions(file, fs::perms(0741));
  std::FILE* const other = OpenFile(folder.Path("other"), OpenFor::Making, error);
  struct stat made {};
  EXPECT_TRUE(other && fcntl(fileno(other), F_GETFD) == FD_CLOEXEC && fstat(fileno(other), &made) == 0);
  const mode_t mask = umask(022);
  umask(mask);
  EXPECT_EQ(made.st_mode & 0777, 0666 & ~mask);
  CopyPermissions(file, other, error);
  EXPECT_TRUE(!error && fs::status(folder.Path("other")).permissions() == fs::perms(0741));
  CopyPermissions(folder.Path("none"), other, error);
  EXPECT_EQ(error, std::errc::no_such_file_or_directory);
  std::fclose(other);
  // The finest unit is told.
  const timespec times[] = {{1, 0}, {5, 6}};
  EXPECT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
  EXPECT_EQ(StateOf(file, error).lastChange, 5'000'000'006);
}

TEST(Platform, ClosedStreamsAndSignals) {
  EXPECT_EQ(std::vector<int>(EndSignals().begin(), EndSignals().end()),
            (std::vector<int>{SIGINT, SIGTERM, SIGHUP}));
  const int kept = dup(STDIN_FILENO);
  close(STDIN_FILENO);
  const int before = dup(kept);  // takes its place
  close(before);
  PrepareProcess();
  char byte = 0;
  EXPECT_EQ(read(STDIN_FILENO, &byte, 1), 0);
  EXPECT_EQ(write(STDIN_FILENO, &byte, 1), 1);
  const int next = dup(kept);
  EXPECT_EQ(next, kept + 1) << "nothing stays open";
  close(next);
  dup2(kept, STDIN_FILENO);
  close(kept);
  for (const int signal : {SIGPIPE, SIGXFSZ}) EXPECT_EQ(std::signal(signal, SIG_DFL), SIG_IGN);
}

// Only root can make files of another user, whose locks tell nothing.
TEST(Platform, OneInstanceOfANameAndAUser) {
  const std::string name = "sondrix-test-" + std::to_string(std::rand());
  const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
  const std::string folder = runtime && *runtime ? runtime : fs::temp_directory_path().string();
  const std::string file = folder + "/" + name + "." + std::to_string(getuid()) + ".lock";
  EXPECT_TRUE(SingleInstance(name).IsFirst());
  const SingleInstance first(name);
  EXPECT_TRUE(first.IsFirst() && !SingleInstance(name).IsFirst());
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
  if (chown(file.c_str(), 65534, 65534) != 0) GTEST_SKIP() << "files can't be given away";
  EXPECT_TRUE(SingleInstance(name).IsFirst());
  fs::remove(file);
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  const int other = open(file.c_str(), O_RDWR);
  EXPECT_EQ(flock(other, LOCK_EX), 0);
  EXPECT_TRUE(SingleInstance(name).IsFirst());
  close(other);
  fs::remove(file);
}

TEST(Platform, LanguageAndFolderOfTheEnvironment) {
  const char* const rows[][3] = {{"", "", "ru_RU.UTF-8"}, {"", "de_AT@euro", "en_US"},
                                 {"C", "de_DE", "ru"},    {"", "", ""},
                                 {"POSIX", "", "C-1"},    {"rumantsch", "", "eng"}};
  std::ostringstream text;
  for (const auto& [all, messages, lang] : rows) {
    setenv("LC_ALL", all, 1);
    setenv("LC_MESSAGES", messages, 1);
    setenv("LANG", lang, 1);
    text << std::hex << InterfaceLanguage() << ' ' << SystemLanguage() << ", ";
  }
  EXPECT_EQ(text.str(), "419 419, 407 409, 409 419, 409 409, 409 409, 0 0, ");
  setenv("HOME", "/home/a", 1);
  setenv("XDG_CONFIG_HOME", "relative", 1);
  EXPECT_EQ(ConfigFolder(), "/home/a/.config/sondrix");
  setenv("XDG_CONFIG_HOME", "/cfg", 1);
  EXPECT_EQ(ConfigFolder(), "/cfg/sondrix");
}
#endif

}  // namespace
}  // namespace sondrix
