#include "core/files.h"

#include "core/outputs.h"
#include "fault_in.h"
#include "test_window.h"

#include <array>
#include <chrono>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <new>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif

namespace sondrix {
namespace {

namespace fs = std::filesystem;

TEST(Files, RefusalsHaveTheirNumbersAndLengthsHaveNoLimit) {
  const fs::path folder = fs::path(testing::TempDir()) / "sondrix_files_test";
  fs::remove_all(folder);
  fs::create_directories(folder / "dir");
  const std::string file = (folder / "file").string();
  OutputFile(file).Write("x");
  for (const auto& [name, read, write] :
       {std::tuple("none", 53, 0), {"none/x", 76, 76}, {"file/x", 76, 76}, {"dir", 75, 75}, {"file", 0, 0}}) {
    const std::string path = (folder / name).string();
    EXPECT_EQ(FaultIn([&] { InputFile input(path); }), read) << path;
    EXPECT_EQ(FaultIn([&] { OutputFile output(path); }), write) << path;
    fs::remove(folder / "none");
  }
  EXPECT_EQ(FaultIn([&] { DeleteIfThere(folder.string()); }), 75);
  const int tooLong = PathSeparator == '\\' ? 53 : 52;  // Windows finds no such file
  EXPECT_EQ(FaultIn([&] { InputFile input(file + std::string(300, 'n')); }), tooLong);
#ifdef _WIN32
  const HANDLE busy = CreateFileW(PathOf(file).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(FaultIn([&] { InputFile input(file); }), 70);
  EXPECT_EQ(FaultIn([&] { OutputFile output(file); }), 70);
  EXPECT_EQ(FaultIn([&] { DeleteIfThere(file); }), 70);
  CloseHandle(busy);
#endif
  std::error_code full;
  fs::resize_file(file, 5'000'000'000, full);
  std::array<std::uint8_t, 8> target{};
  EXPECT_TRUE(full || InputFile(file).ReadAt(4'999'999'995, target) == 5);
  fs::remove_all(folder);
}

struct FilesIn : testing::Test {
  FilesIn() {
    fs::remove_all(folder);
    fs::create_directories(folder);
  }
  ~FilesIn() override { fs::remove_all(folder); }
  std::string Path(const std::string& name) const { return (folder / name).string(); }
  void Put(const std::string& name, const std::string& text) const { std::ofstream(folder / name) << text; }
  // Whether there are links here.
  bool Link(const std::string& name, const std::string& target) const {
    std::error_code error;
    fs::create_symlink(target, folder / name, error);
    return !error;
  }

  // Of this test of this process: tests run at the same time.
  const fs::path folder =
      fs::path(testing::TempDir()) /
      ("sondrix_files_in." + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) +
       "." + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
};

TEST_F(FilesIn, AnIdMeansTheFileWhateverItsName) {
  Put("one", "x");
  Put("other", "x");
  fs::create_hard_link(Path("one"), Path("hard"));
  const bool hasLinks = Link("soft", "one");
  const InputFile input(Path("one"));
  for (const auto& [name, isSame] : std::map<std::string, bool>{{"one", true},
                                                                {"hard", true},
                                                                {"soft", hasLinks},
                                                                {"./one", true},
                                                                {"other", false},
                                                                {"none", false}}) {
    EXPECT_EQ(IdOf(Path(name)) == input.Id(), isSame) << name;
    EXPECT_EQ(IdOf(Path("one")) == IdOf(Path(name)), isSame) << name;
  }
  EXPECT_FALSE(IdOf(Path("none/x")) || IdOf(Path("one/x")));
  if (!Link("loop", "loop")) GTEST_SKIP() << "no links here";
  EXPECT_EQ(FaultIn([&] { InputFile loop(Path("loop")); }), 52);
}

TEST_F(FilesIn, ASourceTellsThatItChanged) {
  Put("source", "1234");
  const std::string path = Path("source");
  const auto time = std::chrono::floor<std::chrono::seconds>(fs::last_write_time(path));
  fs::last_write_time(path, time);
  const InputFile input(path);
  EXPECT_FALSE(input.HasChanged());
  std::ofstream(path, std::ios::app) << "5";
  fs::last_write_time(path, time);
  EXPECT_TRUE(input.HasChanged());  // by its length
  fs::resize_file(path, 4);
  fs::last_write_time(path, time);
  EXPECT_FALSE(input.HasChanged());
  // The library sets whole seconds on Windows.
  fs::last_write_time(path, time + std::chrono::microseconds(PathSeparator == '/' ? 1 : 1'000'000));
  EXPECT_TRUE(input.HasChanged());
}

TEST_F(FilesIn, WhatIsReadOnIsWhatStandsThere) {
  Put("source", "1234");
  InputFile input(Path("source"));
  std::array<std::uint8_t, 3> target{};
  EXPECT_EQ(input.ReadAt(1, target), 3U);
  EXPECT_EQ(target[0], '2');
  EXPECT_EQ(input.ReadAt(2, target), 2U);
  std::ofstream(Path("source"), std::ios::app) << "567";
  EXPECT_EQ(input.ReadAt(4, target), 3U);
  EXPECT_EQ(target[2], '7');
}

TEST_F(FilesIn, ALinkInAnOutputsWayIsReplaced) {
  Put("mine", "mine");
  fs::create_hard_link(Path("mine"), Path("name"));
  OutputFile(Path("name")).Write("new");
  EXPECT_EQ(ReadWhole(Path("name")), "new");
  EXPECT_EQ(ReadWhole(Path("mine")), "mine");
  fs::create_directory(Path("dir"));
  for (const char* target : {"mine", "dir", "none", "link"}) {
    if (!Link("link", target)) GTEST_SKIP() << "no links here";
    const std::string_view text = "new";
    OutputFile(Path("link")).Complete(std::span(&text, 1));
    EXPECT_FALSE(fs::is_symlink(Path("link"))) << target;
    EXPECT_EQ(ReadWhole(Path("link")), "new") << target;
    fs::remove(Path("link"));
  }
  EXPECT_EQ(ReadWhole(Path("mine")), "mine");
  EXPECT_FALSE(fs::exists(Path("none")));
}

TEST_F(FilesIn, AnOutputThatIsntInItsPlaceAnyMoreIsAFault) {
  if (PathSeparator == '\\') GTEST_SKIP() << "open files stay where they are";
  const std::string name = Path("out/file");
  const auto putAnother = [&] { Put("out/file", "another's"); };
  const struct {
    int fault, ofGrowing;  // whose name is another one
    std::function<void()> happens;
  } cases[] = {
      {0, 0, [] {}},
      {76, 76, [&] { fs::rename(Path("out"), Path("moved")); }},
      {76, 76, [&] { fs::remove_all(Path("out")); }},
      {75, 75, [&] { fs::remove(name), fs::remove(name + ".part"); }},
      {75, 0, [&] { fs::remove(name), putAnother(); }},
      {75, 0,
       [&] { fs::remove(name), putAnother(), fs::rename(name, Path("file")), Link("out/file", "../file"); }},
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

TEST_F(FilesIn, AGrowingFileLeavesTheEarlierOneUntilItIsWhole) {
  Put("source", "mine");
  const struct {
    std::string what;
    std::function<void(const std::string&)> put;
  } cases[] = {
      {"nothing", [](const std::string&) {}},
      {"a file", [&](const std::string& name) { Put(name, "old"); }},
      {"the source", [&](const std::string& name) { fs::create_hard_link(Path("source"), Path(name)); }},
      {"a link", [&](const std::string& name) { Link(name, "source"); }}};
  for (const auto& atName : cases) {
    for (const auto& atPart : cases) {
      atName.put("lake.csv");
      atPart.put("lake.csv.part");
      const bool isThere = fs::exists(Path("lake.csv"));
      const std::string before = isThere ? ReadWhole(Path("lake.csv")) : "";
      GrowingFile file(Path("lake.csv"));
      file.File().Write("new");
      EXPECT_EQ(fs::exists(Path("lake.csv")), isThere);
      EXPECT_TRUE(!isThere || ReadWhole(Path("lake.csv")) == before);
      file.PutInPlace();
      EXPECT_EQ(ReadWhole(Path("lake.csv")), "new") << atName.what << ", " << atPart.what;
      EXPECT_FALSE(fs::is_symlink(Path("lake.csv")) || fs::exists(Path("lake.csv.part")));
      EXPECT_EQ(ReadWhole(Path("source")), "mine") << atName.what << ", " << atPart.what;
      fs::remove(Path("lake.csv"));
    }
  }
  fs::create_directories(Path("dir/below"));
  fs::create_directory(Path("part.part"));
  for (const auto& [name, number] : std::map<std::string, int>{{"dir", 75}, {"none/x", 76}, {"part", 75}})
    EXPECT_EQ(FaultIn([&, &path = name] { GrowingFile file(Path(path)); }), number) << name;
}

TEST_F(FilesIn, OutputsAreGuardedAndRecorded) {
  Put("source", "mine");
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

TEST(Fault, NamesWhatWasCaught) {
  EXPECT_EQ(FaultIn([] { throw std::bad_alloc(); }), 7);
  EXPECT_EQ(FaultIn([] { throw fs::filesystem_error("", std::make_error_code(std::errc::io_error)); }), 57);
}

}  // namespace
}  // namespace sondrix
