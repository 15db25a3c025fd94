#include "app/batch/options.h"

#include "app/batch/exit_status.h"
#include "app/batch/output_clash.h"
#include "app/language.h"
#include "core/settings.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sondrix {
namespace {

TEST(BatchOptions, TakesWhatIsGiven) {
  const std::vector<std::string> arguments = {
      "-s",       "MakeCut=1", "/a.sl2", "-o", "out", "--set",   "TargetName=", "-sDepthMP=a=b",
      "--answer", "no",        "-v",     "--", "-b",  "[c,d].mp"};
  const auto [options, exitStatus, text] = ParseOptions(arguments);
  EXPECT_FALSE(exitStatus) << text;
  EXPECT_EQ(options.targetPath, "out");
  EXPECT_TRUE(options.verbose && !options.answer);
  EXPECT_EQ(options.sources, (std::vector<std::string>{"/a.sl2", "-b", "[c,d].mp"}));
  std::string edits;
  for (const FieldEdit& edit : options.edits) edits += edit.name + "(" + edit.value + ")";
  EXPECT_EQ(edits, "MakeCut(1)TargetName()DepthMP(a=b)");
}

TEST(OutputClash, SeesTheSameNamesOnly) {
  const struct {
    const char *targetPath, *targetName;
    std::vector<std::string> sources;
    bool clashes;
  } cases[] = {
      {"out/", "", {"a.sl2", "b.sl2"}, false},           {"out/", "", {"x/a.sl2", "y/a.sl3"}, true},
      {"out/", "", {"a.sl2", "a_bad.csv"}, true},                                    // both write a_bad.txt
      {"out/", "", {"a.log", "a.drd.csv"}, true},        {"", "", {"a.txt"}, true},  // its own point list
      {"", "", {"a.v1.sl2", "a.v2.sl2"}, false},         {"out/", "one", {"a.sl2", "b.sl2"}, true},
      {"out/", "one", {"a.mp", "b.mp", "c.csv"}, false}, {"out/", "", {"x/a.mp", "x/../x/a.mp"}, true},
      {"x", "", {"x/a.mp", "y/a.csv"}, false},       // too short a folder gets no separator
      {"long", "", {"long/a.mp", "y/a.csv"}, true},  // both write long/a.txt
      {"", "", {"noPoint", "noPoint"}, false},       // nothing is written for these
      {"", "", {"folder/", "folder/"}, false},
  };
  for (const auto& [targetPath, targetName, sources, clashes] : cases) {
    Settings settings;
    settings.TargetPath = targetPath;
    settings.TargetName = targetName;
    EXPECT_EQ(OutputClash(settings, sources).has_value(), clashes) << sources[0] << " " << sources.back();
  }
}

TEST(EndedWell, KnowsErrorsBehindThePercentageToo) {
  const struct {
    LangId language;
    const char* lastLine;
    bool isWell;
  } cases[] = {
      {LangEnglish, " * processing aborted by user", true},
      {LangEnglish, " 100бка WriteF: 75. Path/File access error * done", false},
      {LangEnglish, " 100log-file error 99% offset 5000... * done", false},
      {LangGerman, " 100Log-Fehler99% Offset 5000... * Ausgeführt", false},
      {LangEnglish, " * specify the source file in 'polish' format to continue", false},
  };
  for (const auto& [language, lastLine, isWell] : cases) {
    EXPECT_EQ(EndedWell(lastLine, *MessagesOf(language)), isWell) << lastLine;
  }
}

}  // namespace
}  // namespace sondrix
