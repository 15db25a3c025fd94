#include "core/files.h"

#include "fault_in.h"

#include <array>
#include <gtest/gtest.h>
#include <new>

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

TEST(Fault, NamesWhatWasCaught) {
  EXPECT_EQ(FaultIn([] { throw std::bad_alloc(); }), 7);
  EXPECT_EQ(FaultIn([] { throw fs::filesystem_error("", std::make_error_code(std::errc::io_error)); }), 57);
}

}  // namespace
}  // namespace sondrix
