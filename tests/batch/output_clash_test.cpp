#include "app/batch/output_clash.h"

#include "core/settings.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sondrix {
namespace {

TEST(OutputClash, SeesTheSameNamesOnly) {
  const struct {
    const char *targetPath, *targetName;
    std::vector<std::string> sources;
    bool clashes;
  } cases[] = {
      {"out/", "", {"a.v1.sl2", "a.v2.sl2"}, false},
      {"out/", "", {"x/a.sl2", "y/a.sl3"}, true},
      {"out/", "", {"a.sl2", "a_bad.csv"}, true},  // both write a_bad.txt
      {"out/", "", {"a.log", "a.drd.csv"}, true},
      {"", "", {"a.txt"}, true},  // its own point list
      {"out/", "one", {"a.sl2", "b.sl2"}, true},
      {"out/", "one", {"a.mp", "b.mp", "c.csv"}, false},
      {"out/", "", {"x/a.mp", "x/../x/a.mp"}, true},
      {"x", "", {"x/a.mp", "y/a.csv"}, false},       // too short a folder gets no separator
      {"long", "", {"long/a.mp", "y/a.csv"}, true},  // both write long/a.txt
      {"", "", {"noPoint", "noPoint"}, false},       // nothing is written for these
  };
  for (const auto& [targetPath, targetName, sources, clashes] : cases) {
    Settings settings;
    settings.TargetPath = targetPath;
    settings.TargetName = targetName;
    EXPECT_EQ(OutputClash(settings, sources).has_value(), clashes) << sources[0] << " " << sources.back();
  }
}

}  // namespace
}  // namespace sondrix
