#include "platform/platform.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

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

#ifndef _WIN32
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
