#include "core/growing_folder.h"

#include "core/fault.h"
#include "core/files.h"
#include "temporary_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

std::set<std::string> NamesIn(const fs::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename().string());
  return names;
}

TEST(GrowingFolder, AllFilesTakeTheirPlaceOrNone) {
  const TemporaryFolder folder;
  const auto grow = [&] {
    GrowingFolder growing(folder.Path("a.shp"));
    const std::string inner = fs::path(growing.InnerPath()).parent_path().filename().string() + "/";
    for (const char* name : {"a.dbf", "a.shp", "a.shx"}) folder.Write(inner + name, "new");
    return growing;
  };
  folder.Write("a.shp", "old");
  folder.Write("a.dbf", "old");
  folder.Write("a.qix", "old");
  const std::string stale[] = {folder.Path("a.qix"), folder.Path("a.sbn")};

  // The last companion meets a folder: what was moved before goes back.
  fs::create_directory(folder.Path("a.shx"));
  GrowingFolder failing = grow();
  EXPECT_THROW(failing.PutInPlace(stale), Fault);
  failing.TakeAway();
  EXPECT_EQ(NamesIn(folder.Root()), (std::set<std::string>{"a.dbf", "a.qix", "a.shp", "a.shx"}));
  for (const char* name : {"a.shp", "a.dbf", "a.qix"}) EXPECT_EQ(folder.Read(name), "old") << name;
  fs::remove(folder.Path("a.shx"));

  // One that an ended program left is in nobody's way; one of somebody else's is.
  grow();
  GrowingFolder growing = grow();
  growing.PutInPlace(stale);
  EXPECT_EQ(NamesIn(folder.Root()), (std::set<std::string>{"a.dbf", "a.shp", "a.shx"}));
  for (const char* name : {"a.shp", "a.dbf", "a.shx"}) EXPECT_EQ(folder.Read(name), "new") << name;
  fs::create_directories(folder.Path("a.shp.part/of somebody"));
  EXPECT_THROW(grow(), Fault);
  EXPECT_THROW(GrowingFolder(folder.Path("none/a.shp")), Fault);
}

}  // namespace
}  // namespace sondrix
