#include "platform/platform.h"

#include "platform/shared_library.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace sondrix {
namespace {

TEST(Platform, KnowsItsProgram) {
  EXPECT_EQ(ProgramStem(), "platform_test");
  EXPECT_TRUE(CanWriteFolder(ProgramFolder()));
  EXPECT_FALSE(CanWriteFolder(ProgramFolder() + "/none"));
  EXPECT_GT(SystemVersion().first, 0);
}

TEST(Platform, OneInstanceOfAName) {
  const std::string name = "sondrix-test-" + std::to_string(std::rand());
  for (int i = 0; i < 2; ++i) {
    const SingleInstance first(name);
    EXPECT_TRUE(first.IsFirst());
    EXPECT_FALSE(SingleInstance(name).IsFirst());
  }
}

// The recorder stands for the map program's library.
TEST(Platform, ALibraryIsTakenWholeAndByItsWholePath) {
  namespace fs = std::filesystem;
  const fs::path file = fs::path(testing::TempDir()) / LibraryFileName("Sondrix-Test");
  fs::copy_file(RECORDER, file, fs::copy_options::overwrite_existing);
  EXPECT_TRUE(SharedLibrary(file.string()).Find("oziCloseApi", 0));
  EXPECT_FALSE(SharedLibrary(file.string()).Find("ozi", 0));
  for (const std::string& path : {file.filename().string(), testing::TempDir(), file.string() + ".none"})
    EXPECT_FALSE(SharedLibrary(path).IsLoaded()) << path;
  // What is behind the first quarter may be for a debugger.
  for (const std::uintmax_t length : {fs::file_size(file) / 4, std::uintmax_t{64}, std::uintmax_t{0}}) {
    fs::resize_file(file, length);
    EXPECT_FALSE(SharedLibrary(file.string()).IsLoaded()) << length;
  }
  fs::remove(file);
}

#ifndef _WIN32
// Only root can make files of another user.
TEST(Platform, ALockThatIsntTheUsersTellsNothing) {
  const std::string name = "sondrix-test-" + std::to_string(std::rand());
  const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
  const std::string folder = runtime && *runtime ? runtime : std::filesystem::temp_directory_path().string();
  const std::string file = folder + "/" + name + "." + std::to_string(getuid()) + ".lock";
  const SingleInstance first(name);
  EXPECT_FALSE(SingleInstance(name).IsFirst());
  if (chown(file.c_str(), 65534, 65534) != 0) GTEST_SKIP() << "files can't be given away";
  EXPECT_TRUE(SingleInstance(name).IsFirst());
  std::filesystem::remove(file);
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  const int other = open(file.c_str(), O_RDWR);
  EXPECT_EQ(flock(other, LOCK_EX), 0);
  EXPECT_TRUE(SingleInstance(name).IsFirst());
  close(other);
  std::filesystem::remove(file);
}

TEST(Platform, LanguageOfTheEnvironment) {
  const struct {
    const char *all, *messages, *lang;
    int user, system;
  } cases[] = {{"", "", "ru_RU.UTF-8", 0x419, 0x419},
               {"", "de_AT@euro", "en_US", 0x407, 0x409},
               {"C", "de_DE", "ru", 0x409, 0x419},
               {"", "", "", 0x409, 0x409},
               {"rumantsch", "", "eng", 0, 0}};
  for (const auto& oneCase : cases) {
    setenv("LC_ALL", oneCase.all, 1);
    setenv("LC_MESSAGES", oneCase.messages, 1);
    setenv("LANG", oneCase.lang, 1);
    EXPECT_EQ(InterfaceLanguage(), oneCase.user) << oneCase.all << " " << oneCase.lang;
    EXPECT_EQ(SystemLanguage(), oneCase.system) << oneCase.lang;
  }
}

TEST(Platform, ConfigurationFolderOfTheUser) {
  setenv("HOME", "/home/a", 1);
  setenv("XDG_CONFIG_HOME", "relative", 1);
  EXPECT_EQ(ConfigFolder(), "/home/a/.config/sondrix");
  setenv("XDG_CONFIG_HOME", "/cfg", 1);
  EXPECT_EQ(ConfigFolder(), "/cfg/sondrix");
}
#endif

}  // namespace
}  // namespace sondrix
