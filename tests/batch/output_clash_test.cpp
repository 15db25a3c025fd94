#include "app/batch/output_clash.h"

#include "core/settings.h"
#include "platform/file_system.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sondrix {
namespace {

// A letter for each source: free, the same output as another's, or in a source's place.
TEST(OutputClash, SeesTheSameNamesOnly) {
  const struct {
    const char *targetPath, *targetName;
    std::vector<std::string> sources;
    std::string clashes;
  } cases[] = {
      {"out/", "", {"a.v1.sl2", "a.v2.sl2"}, "ff"},
      {"out/", "", {"x/a.sl2", "b.csv", "y/a.sl3"}, "sfs"},
      {"out/", "", {"a.sl2", "a_bad.csv"}, "ss"},  // both write a_bad.txt
      {"out/", "", {"a.sl2", "A.sl2"}, IgnoresCaseOfNames() ? "ss" : "ff"},
      {"out/", "", {"a.log", "a.drd.csv"}, "ss"},
      {"", "", {"a.txt"}, "p"},  // its own point list
      {"", "", {"a.sl2", "a.csv"}, "pf"},
      {"out/", "one", {"a.sl2", "b.sl2"}, "ss"},
      {"out/", "one", {"a.mp", "b.mp", "c.csv"}, "fff"},
      {"out/", "", {"x/a.mp", "x/../x/a.mp"}, "ss"},
      {"x", "", {"x/a.mp", "y/a.csv"}, "ff"},        // too short a folder gets no separator
      {"long", "", {"long/a.mp", "y/a.csv"}, "sp"},  // both write long/a.txt, one long/a.mp
      {"", "", {"noPoint", "noPoint"}, "ff"},        // nothing is written for these
  };
  for (const auto& [targetPath, targetName, sources, clashes] : cases) {
    Settings settings;
    settings.TargetPath = targetPath;
    settings.TargetName = targetName;
    std::string found;
    for (const auto& clash : OutputClashes(settings, sources)) {
      found += !clash ? 'f' : clash->overwrites ? 'p' : 's';
    }
    EXPECT_EQ(found, clashes) << sources[0] << " " << sources.back();
  }
  // The crop counts where it is made.
  Settings settings;
  settings.TargetPath = "out/";
  settings.UseTyp = 5;
  for (const bool crops : {false, true}) {
    settings.MakeCut = crops;
    settings.MakeGraf = !crops;
    EXPECT_EQ(OutputClashes(settings, std::vector<std::string>{"a.sl2", "out/a_ch5.sl2"})[0].has_value(),
              crops);
  }
}

}  // namespace
}  // namespace sondrix
