#include "core/files.h"

#include "fault_in.h"
#include "test_window.h"

#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <new>

#ifdef _WIN32
#include <windows.h>
#endif

namespace sondrix {
namespace {

namespace fs = std::filesystem;

// A folder of its own for each test.
class Files : public testing::Test {
 protected:
  Files() {
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    folder_ = fs::temp_directory_path() / ("sondrix.files." + name);
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  ~Files() override { fs::remove_all(folder_); }

  std::string At(std::string_view name) const {
    const std::u8string text = (folder_ / PathOf(name)).u8string();
    return {text.begin(), text.end()};
  }
  void Put(std::string_view name, std::string_view bytes) const {
    std::ofstream(folder_ / PathOf(name), std::ios::binary) << bytes;
  }

  fs::path folder_;
};

TEST_F(Files, ReadsBeyondFourGigabytes) {
  Put("big", "x");
  std::error_code error;
  fs::resize_file(folder_ / "big", 5'000'000'000, error);
  if (error) GTEST_SKIP() << error.message();
  InputFile file(At("big"));
  std::array<std::uint8_t, 8> target{};
  EXPECT_EQ(file.ReadAt(4'999'999'995, target), 5U);
}

TEST_F(Files, RefusalsHaveTheirNumbers) {
  Put("file", "x");
  fs::create_directory(folder_ / "dir");
  for (const auto& [name, read, write] :
       {std::tuple("none", 53, 0), {"none/x", 76, 76}, {"file/x", 76, 76}, {"dir", 75, 75}, {"file", 0, 0}}) {
    const std::string path = At(name);
    EXPECT_EQ(FaultIn([&] { InputFile file(path); }), read) << path;
    EXPECT_EQ(FaultIn([&] { OutputFile file(path); }), write) << path;
    fs::remove(folder_ / "none");
  }
  const int tooLong = PathSeparator == '\\' ? 53 : 52;  // Windows finds no such file
  EXPECT_EQ(FaultIn([&] { InputFile file(At(std::string(300, 'n'))); }), tooLong);
}

#ifdef _WIN32
TEST_F(Files, DrivesAndBothSeparators) {
  const std::string drive = folder_.root_name().string();
  for (const std::string& there : {drive, drive + "\\", drive + "/", At("a\\b/c\\")})
    EXPECT_TRUE(MakeFolders(there));
  EXPECT_TRUE(fs::is_directory(folder_ / "a" / "b" / "c"));
  EXPECT_TRUE(FileNameOf("a/b\\c") == "c" && FileNameOf("a\\b/c") == "c");
  EXPECT_EQ(FaultIn([] { OutputFile file("\\\\none\\none\\x"); }), 76);
}

TEST_F(Files, AFileInUseIsDenied) {
  Put("busy", "x");
  const auto name = PathOf(At("busy"));
  const HANDLE file = CreateFileW(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(FaultIn([&] { InputFile busy(At("busy")); }), 70);
  EXPECT_EQ(FaultIn([&] { OutputFile busy(At("busy")); }), 70);
  EXPECT_EQ(FaultIn([&] { DeleteIfThere(At("busy")); }), 70);
  CloseHandle(file);
}
#endif

TEST_F(Files, WriteFEndsTheTextWithOneLineEnd) {
  TestWindow window;
  Put("a.txt", "longer than what replaces it");
  WriteF(At("a.txt"), "Яма\r\n", window);
  EXPECT_EQ(ReadWhole(At("a.txt")), "\xDF\xEC\xE0\r\n\r\n");
  EXPECT_EQ(window.Att(), "");
  WriteF(At("none/c.txt"), "x", window);
  EXPECT_EQ(window.Att(), "ошибка WriteF: 76. Path not found");
}

TEST_F(Files, MakesFoldersUpToTheLastSeparator) {
  EXPECT_TRUE(MakeFolders(At("a/b/c")) && MakeFolders(""));
  EXPECT_TRUE(fs::is_directory(folder_ / "a" / "b") && !fs::exists(folder_ / "a" / "b" / "c"));
  Put("file", "x");
  EXPECT_FALSE(MakeFolders(At("file/b/")));
}

TEST_F(Files, DeletesAndComparesByFile) {
  Put("a", "x");
  Put("b", "x");
  fs::create_hard_link(folder_ / "a", folder_ / "link");
  EXPECT_TRUE(SameFile(At("a"), At("link")));
  EXPECT_FALSE(SameFile(At("a"), At("b")) || SameFile(At("none"), At("none")));
  DeleteIfThere(At("a"));
  EXPECT_FALSE(fs::exists(folder_ / "a"));
  EXPECT_EQ(FaultIn([&] { DeleteIfThere(At(".")); }), 75);
  EXPECT_EQ(FileNameOf("dir/name.ext"), "name.ext");
  EXPECT_EQ(FileNameOf("name"), "name");
}

TEST(Fault, NamesWhatWasCaught) {
  EXPECT_EQ(FaultIn([] { throw std::bad_alloc(); }), 7);
  EXPECT_EQ(FaultIn([] { throw fs::filesystem_error("", std::make_error_code(std::errc::io_error)); }), 57);
  EXPECT_THROW(FaultIn([] { throw 1; }), int);
}

}  // namespace
}  // namespace sondrix
