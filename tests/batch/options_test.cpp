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

ParsedOptions Parse(const std::vector<std::string>& arguments) { return ParseOptions(arguments); }

TEST(BatchOptions, TakesWhatIsGiven) {
  const auto parsed =
      Parse({"-s", "MakeCut=1", "/a.sl2", "-o", "out", "--set", "TargetName=", "-sDepthMP=a=b", "--answer",
             "no", "-v", "--", "-b.csv", "[c,d].mp"});
  ASSERT_FALSE(parsed.exitStatus) << parsed.text;
  const BatchOptions& options = parsed.options;
  EXPECT_EQ(options.targetPath, "out");
  EXPECT_FALSE(options.answer);
  EXPECT_TRUE(options.verbose);
  EXPECT_EQ(options.sources, (std::vector<std::string>{"/a.sl2", "-b.csv", "[c,d].mp"}));
  std::string edits;
  for (const FieldEdit& edit : options.edits) edits += edit.name + "(" + edit.value + ")";
  EXPECT_EQ(edits, "MakeCut(1)TargetName()DepthMP(a=b)");
}

TEST(BatchOptions, SomeArgumentsEndIt) {
  const struct {
    std::vector<std::string> arguments;
    int status;
    const char* said;
  } cases[] = {
      {{"--help"}, 0, "FIELD=VALUE"},
      {{"--version"}, 0, "sondrix-batch "},
      {{"--unknown", "a.sl2"}, 2, "--unknown"},
      {{"a.sl2", "-s"}, 2, "--set"},
      {{"a.sl2", "-s", "UseDcm"}, 2, "UseDcm"},
      {{"a.sl2", "--answer", "maybe"}, 2, "maybe"},
      {{"a.sl2", "-o", "x", "-o", "y"}, 2, "--target"},
      {{""}, 2, "source"},
  };
  for (const auto& [arguments, status, said] : cases) {
    const auto parsed = Parse(arguments);
    EXPECT_EQ(parsed.exitStatus, status) << arguments[0];
    EXPECT_NE(parsed.text.find(said), std::string::npos) << parsed.text;
    EXPECT_EQ(status == 2, parsed.text.find('\n') == std::string::npos) << parsed.text;
  }
}

TEST(OutputClash, SeesTheSameNamesOnly) {
  const struct {
    const char *targetPath, *targetName;
    std::vector<std::string> sources;
    bool clashes;
  } cases[] = {
      {"out/", "", {"a.sl2", "b.sl2"}, false},
      {"out/", "", {"x/a.sl2", "y/a.sl3"}, true},
      {"out/", "", {"a.sl2", "a_bad.csv"}, true},  // both write a_bad.txt
      {"out/", "", {"a.log", "a.drd.csv"}, true},
      {"", "", {"a.txt"}, true},  // its own point list
      {"", "", {"a.sl2", "a.csv"}, true},
      {"out/", "", {"a.txt", "a.log"}, true},  // a.plt
      {"", "", {"a.v1.sl2", "a.v2.sl2"}, false},
      {"out/", "one", {"a.sl2", "b.sl2"}, true},
      {"out/", "one", {"a.mp", "b.mp", "c.csv"}, false},
      {"out/", "", {"x/a.mp", "x/../x/a.mp"}, true},
      {"x", "", {"x/a.mp", "y/xa.csv"}, false},      // too short a folder gets no separator
      {"long", "", {"long/a.mp", "y/a.csv"}, true},  // both write long/a.txt
      {"long", "", {"long/a.mp", "y/a.sl2"}, false},
      {"", "", {"noPoint", "noPoint"}, false},  // nothing is written for these
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
      {LangEnglish, " 100%  scan 653 * done", true},
      {LangEnglish, " * processing aborted by user", true},
      {LangEnglish, " ! error JobSl: 9. Subscript out of range", false},
      {LangEnglish, "ошибка WriteF: 75. Path/File access error", false},
      {LangEnglish, " 100бка WriteF: 75. Path/File access error * done", false},
      {LangEnglish, " 100log-file error 99% offset 5000... * done", false},
      {LangGerman, " 100Log-Fehler99% Offset 5000... * Ausgeführt", false},
      {LangEnglish, " begin processing...", false},
      {LangEnglish, " * specify the source file in 'polish' format to continue", false},
  };
  for (const auto& [language, lastLine, isWell] : cases) {
    EXPECT_EQ(EndedWell(lastLine, *MessagesOf(language)), isWell) << lastLine;
  }
}

}  // namespace
}  // namespace sondrix
