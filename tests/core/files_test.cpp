#include "core/files.h"

#include "core/outputs.h"
#include "fault_in.h"
#include "temporary_folder.h"
#include "test_window.h"

#include <array>
#include <chrono>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

struct FilesIn : testing::Test, TemporaryFolder {
  // Whether there are links here.
  bool Link(const std::string& name, const std::string& target) const {
    std::error_code error;
    fs::create_symlink(target, Path(name), error);
    return !error;
  }
};

TEST_F(FilesIn, RefusalsHaveTheirNumbersAndLengthsHaveNoLimit) {
  fs::create_directories(Path("dir"));
  const std::string file = Write("file", "x");
  for (const auto& [name, read, write] :
       {std::tuple("none", 53, 0), {"none/x", 76, 76}, {"file/x", 76, 76}, {"dir", 75, 75}, {"file", 0, 0}}) {
    const std::string path = Path(name);
    EXPECT_EQ(FaultIn([&] { InputFile input(path); }), read) << path;
    EXPECT_EQ(FaultIn([&] { OutputFile output(path); }), write) << path;
    fs::remove(Path("none"));
  }
  EXPECT_EQ(FaultIn([&] { DeleteIfThere(Path("dir")); }), 75);
  const int tooLong = PathSeparator == '\\' ? 53 : 52;  // Windows finds no such file
  EXPECT_EQ(FaultIn([&] { InputFile input(file + std::string(300, 'n')); }), tooLong);
  std::error_code full;
  fs::resize_file(file, 5'000'000'000, full);
  std::array<std::uint8_t, 8> target{};
  EXPECT_TRUE(full || InputFile(file).ReadAt(4'999'999'995, target) == 5);
  for (int i = 0; i < 2; ++i) DeleteIfThere(file);
  EXPECT_FALSE(fs::exists(file));
}

TEST_F(FilesIn, AnIdMeansTheFileWhateverItsName) {
  for (const char* name : {"one", "other"}) Write(name, "x");
  fs::create_hard_link(Path("one"), Path("hard"));
  const std::optional<FileId> id = InputFile(Path("one")).Id();
  EXPECT_TRUE(IdOf(Path("hard")) == id && IdOf(Path("other")) && IdOf(Path("other")) != id);
  EXPECT_FALSE(IdOf(Path("none/x")) || IdOf(Path("one/x")));
  if (!Link("soft", "one") || !Link("loop", "loop")) GTEST_SKIP() << "no links here";
  EXPECT_EQ(IdOf(Path("soft")), id);
  EXPECT_EQ(FaultIn([&] { InputFile loop(Path("loop")); }), 52);
}

TEST_F(FilesIn, ASourceTellsThatItChangedAndIsReadAsItStands) {
  const std::string path = Write("source", "1234");
  const auto time = std::chrono::floor<std::chrono::seconds>(fs::last_write_time(path));
  fs::last_write_time(path, time);
  InputFile input(path);
  std::array<std::uint8_t, 3> target{};
  EXPECT_EQ(input.ReadAt(1, target), 3U);
  EXPECT_EQ(target[0], '2');
  EXPECT_EQ(input.ReadAt(2, target), 2U);
  EXPECT_FALSE(input.HasChanged());
  std::ofstream(path, std::ios::app) << "567";
  fs::last_write_time(path, time);
  EXPECT_TRUE(input.HasChanged());  // by its length
  EXPECT_EQ(input.ReadAt(4, target), 3U);
  EXPECT_EQ(target[2], '7');
  fs::resize_file(path, 4);
  fs::last_write_time(path, time);
  EXPECT_FALSE(input.HasChanged());
  // The library sets whole seconds on Windows.
  fs::last_write_time(path, time + std::chrono::microseconds(PathSeparator == '/' ? 1 : 1'000'000));
  EXPECT_TRUE(input.HasChanged());
  input.Close();
  EXPECT_EQ(FaultIn([&] { input.ReadAt(0, target); }), 52);
  EXPECT_TRUE(MakeFolders(Path("new/one/file")) && fs::is_directory(Path("new/one")) && MakeFolders("none"));
  EXPECT_FALSE(MakeFolders(Path("source/x")));
}

TEST_F(FilesIn, AnOutputThatIsntInItsPlaceAnyMoreIsAFault) {
  if (PathSeparator == '\\') GTEST_SKIP() << "open files stay where they are";
  const std::string name = Path("out/file");
  const auto putAnother = [&] { fs::remove(name), Write("out/file", "another's"); };
  const struct {
    int fault, ofGrowing;  // whose name is another one
    std::function<void()> happens;
  } cases[] = {
      {0, 0, [] {}},
      {76, 76, [&] { fs::rename(Path("out"), Path("moved")); }},
      {76, 76, [&] { fs::remove_all(Path("out")); }},
      {75, 75, [&] { fs::remove(name), fs::remove(name + ".part"); }},
      {75, 0, putAnother},
      {75, 0, [&] { putAnother(), fs::rename(name, Path("file")), Link("out/file", "../file"); }},
  };
  for (const auto& oneCase : cases) {
    const auto begin = [&] {
      fs::remove_all(Path("moved"));
      fs::remove_all(Path("out"));
      fs::create_directory(Path("out"));
    };
    begin();
    OutputFile output(name);
    const std::string_view text = "new";
    oneCase.happens();
    EXPECT_EQ(FaultIn([&] { output.Complete(std::span(&text, 1)); }), oneCase.fault) << &oneCase - cases;
    EXPECT_TRUE(oneCase.fault == 0 || !fs::exists(name) || ReadWhole(name) == "another's")
        << &oneCase - cases;
    begin();
    GrowingFile growing(name);
    oneCase.happens();
    EXPECT_EQ(FaultIn([&] { growing.PutInPlace(); }), oneCase.ofGrowing) << &oneCase - cases;
  }
}

TEST_F(FilesIn, AnOutputTakesItsPlaceAndNoOther) {
  Write("source", "mine");
  fs::create_directory(Path("dir"));
  const std::string name = Path("lake.csv");
  const auto link = [&](const char* target) { return [this, target](auto&& at) { Link(at, target); }; };
  // What stands at the name and at the one under which it grows.
  const std::function<void(const char*)> cases[] = {
      [](const char*) {},
      [&](const char* at) { Write(at, "old"); },
      [&](const char* at) { fs::create_hard_link(Path("source"), Path(at)); },
      link("source"),
      link("dir"),
      link("none"),
      link("lake.csv")};
  for (const auto& atName : cases) {
    for (const auto& atPart : cases) {
      atName("lake.csv");
      atPart("lake.csv.part");
      std::error_code ignored;
      const bool isThere = fs::is_regular_file(name, ignored);
      const std::string before = isThere ? Read("lake.csv") : "";
      GrowingFile file(name);
      file.File().Write("new");
      EXPECT_TRUE(fs::is_regular_file(name, ignored) == isThere && (!isThere || Read("lake.csv") == before));
      file.PutInPlace();
      EXPECT_FALSE(fs::is_symlink(name) || fs::exists(name + ".part"));
      EXPECT_EQ(Read("lake.csv") + Read("source"), "newmine") << &atName - cases << &atPart - cases;
      fs::remove(name);
    }
    atName("lake.csv");
    const std::string_view text = "new";
    OutputFile(name).Complete(std::span(&text, 1));
    EXPECT_FALSE(fs::is_symlink(name));
    EXPECT_EQ(Read("lake.csv") + Read("source"), "newmine") << &atName - cases;
    fs::remove(name);
  }
  EXPECT_FALSE(fs::exists(Path("none")));
  fs::create_directory(Path("part.part"));
  for (const auto& [path, number] : std::map<std::string, int>{{"dir", 75}, {"none/x", 76}, {"part", 75}})
    EXPECT_EQ(FaultIn([&, at = Path(path)] { GrowingFile file(at); }), number) << path;
  const std::string longName(121, 'n');
  EXPECT_EQ(GrowingName("a/" + longName.substr(1)), "a/" + longName.substr(1) + ".part");
  EXPECT_TRUE(GrowingName("a/" + longName, ".x").starts_with("a/" + longName.substr(0, 24) + "~"));
}

TEST_F(FilesIn, OutputsAreGuardedAndRecorded) {
  Write("source", "mine");
  TestWindow window;
  Outputs outputs;
  outputs.Begin(Path("source"));
  const OutputFile open = outputs.Open(Path("open"));
  const GrowingFile growing = outputs.Grow(Path("growing"));
  outputs.SetWhole(Path("growing"));
  outputs.Open(Path("forgotten"));
  outputs.Forget(Path("forgotten"));
  outputs.WriteF(Path("text"), "вода", window);
  EXPECT_EQ(ReadWhole(Path("text")), "\xE2\xEE\xE4\xE0\r\n");
  EXPECT_EQ(window.att, "");
  outputs.WriteF(Path("source"), "", window);
  EXPECT_EQ(window.att, "ошибка WriteF: 55. File already open");
  EXPECT_EQ(FaultIn([&] { outputs.Open(Path("none/x")); }), 76);
  RunResult result;
  outputs.TakeInto(result);
  std::string record;
  for (const RunOutput& output : result.outputs)
    record += std::string(FileNameOf(output.path)) + (output.isWhole ? "+ " : "- ");
  EXPECT_EQ(record, "open- growing+ text+ source- x- ");
  ASSERT_EQ(result.lost.size(), 1U);
  EXPECT_EQ(result.lost[0].Path(), Path("source"));
  outputs.Begin(Path("text"));
  outputs.Write(Path("source"), {});  // which is no source any more
  outputs.Begin(Path("none"));
  outputs.TakeInto(result);
  EXPECT_TRUE(result.outputs.empty() && result.lost.empty());
}

}  // namespace
}  // namespace sondrix
