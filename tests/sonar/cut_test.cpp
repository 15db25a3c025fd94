#include "sonar/cut.h"

#include "samples/damage.h"
#include "samples/echogram.h"
#include "test_run.h"

#include <tuple>

namespace sondrix {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(Cut, EndsThatLeaveASoundFile) {
  auto longSamples = Frame(2, 10);
  longSamples.FrameSize = 200;  // the samples run into what follows
  auto small = Frame(2, 10);    // than its header
  small.Samples.resize(10);
  small.FrameSize = 20;
  // What is read, what the log line says at the end, and how long the cropped file is.
  const std::tuple<Bytes, const char*, std::size_t> rows[] = {
      {EchogramBytes(2, {Frame(2, 10)}), " 100  scan 1 ^00:00:00 * done", 8},
      {EchogramBytes(2, {longSamples}), " 100log-file error 10% offset 208... * done", 8},
      {EchogramBytes(2, {small}), " ! error JobSl: 9. Subscript out of range", 8},
      {EchogramBytes(3, {small}), " * process stopped", 8},
      {{2, 0, 0}, " 100gin processing... * done", 8},
      {CleanEchogram(2), " ! error JobSl: 55. File already open", 8 + 80 * 2064},
  };
  for (const auto& [source, end, length] : rows) {
    TestRun test;
    test.settings.MakeCut = true;
    test.settings.TargetName = "lake";
    test.Source(length == 8 ? "lake.sl2" : "out/../out/lake_ch2.sl2", source);
    EXPECT_EQ(test.Click(), end);
    EXPECT_EQ(test.Out("lake_ch2.sl2").size(), length) << end;
    EXPECT_EQ(test.Click(9), " ! 3D channel is not supported in SL2...");
    EXPECT_FALSE(test.HasOut("lake_ch9.sl2"));
  }
}

}  // namespace
}  // namespace sondrix
