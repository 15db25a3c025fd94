#include "samples/echogram.h"
#include "test_run.h"

#include <cmath>
#include <tuple>

namespace sondrix {
namespace {

using Soundings = std::vector<SampleSounding>;

struct Run3D : TestRun {
  Run3D() { settings.MaxSide = settings.MaxProc = ""; }

  // The depths of the points of a run, in metres, which tell the soundings apart.
  std::string DepthsOf(const std::vector<SampleFrame>& frames) {
    Source("lake.sl3", EchogramBytes(3, frames));
    EXPECT_TRUE(Click(9).ends_with(" * done")) << window.att;
    std::string depths;
    for (const std::string& line : OutLines("lake.csv")) {
      const std::size_t end = line.rfind(',');
      const std::size_t start = line.rfind(',', end - 1) + 1;
      depths += line.substr(start, end - start) + " ";
    }
    return depths;
  }
};

TEST(JobSl3D, TurnsLeaveTheOutside) {
  // Course and heading in the order of a run, the points on the left at 1 m and on the right at 2 m, and
  // those of a transducer that faces backwards. The limit is 0.087 rad.
  const std::tuple<float, float, std::string, std::string> rows[] = {
      {0.5F, 0, "1 2 ", "1 2 "},      // the first angle has nothing to turn from
      {0.55F, 0, "1 2 ", "1 2 "},     // below the limit
      {1.30F, 0, "1 ", "2 "},         // a turn to the right
      {1.30F, 0, "1 ", "2 "},         // nothing moved: it goes on
      {0, 0, "1 ", "2 "},             // absent
      {1.10F, 0, "2 ", "1 "},         // to the left
      {1.11F, 2.0F, "1 2 ", "1 2 "},  // the first heading overwrites what the course set
  };
  std::vector<SampleFrame> frames;
  std::string depths, reversed;
  for (const auto& [course, heading, asMounted, backwards] : rows) {
    frames.push_back(Frame3D(Soundings{{3.28084F, 50}}, Soundings{{6.56168F, 50}}));
    frames.back().Course = course;
    frames.back().Heading = heading;
    depths += asMounted;
    reversed += backwards;
  }
  Run3D test;
  test.settings.MaxGrad = "5";
  EXPECT_EQ(test.DepthsOf(frames), depths);
  test.settings.UseRev = true;
  EXPECT_EQ(test.DepthsOf(frames), reversed);
}

TEST(JobSl3D, HostileLists) {
  const float nan = std::nanf("");
  const char *done = " * done", *past = ": 9. Subscript out of range", *overflow = ": 6. Overflow";
  // The lengths of the lists, the percentage of the width, both soundings.
  const std::tuple<int, int, const char*, SampleSounding, const char*> rows[] = {
      {16, 17000, "", {10, 10}, past},   {32767, 16, "", {10, 10}, past},
      {-32768, 0, "", {10, 10}, done},   {-32768, 16, "", {10, 10}, past},
      {-80, 16, "", {0, 0}, done},       {-84, 16, "", {0, 0}, past},
      {16, 32767, "50", {10, 10}, past}, {16, 0, "", {10, 255.5F}, overflow},
      {16, 0, "", {10, 255.4F}, done},   {16, 0, "", {-0.13F, 10}, overflow},
      {16, 0, "", {nan, 10}, overflow},  {16, 0, "50", {10, nan}, overflow},
      {0, 0, "50", {nan, nan}, done},    {11, 0, "", {nan, 10}, done},
      {12, 0, "", {nan, 10}, overflow},
  };
  for (const auto& [left, right, percent, sounding, end] : rows) {
    const SampleSounding list[] = {sounding};
    SampleFrame frame = Frame3D(list, list);
    PutU16(frame.Samples, 4, static_cast<std::uint16_t>(left));
    PutU16(frame.Samples, 8, static_cast<std::uint16_t>(right));
    Run3D test;
    test.settings.MakeGraf = true;
    test.settings.MaxProc = percent;
    test.Source("lake.sl3", EchogramBytes(3, {frame}));
    EXPECT_TRUE(test.Click(9).ends_with(end)) << left << " " << right << " " << percent << test.window.att;
  }
}

}  // namespace
}  // namespace sondrix
