#include "samples/echogram.h"
#include "test_run.h"

#include <cmath>
#include <tuple>

namespace sondrix {
namespace {

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
    TestRun test;
    test.Set("MakeGraf=1 MaxSide=");
    test.settings.MaxProc = percent;
    test.Source("lake.sl3", EchogramBytes(3, {frame}));
    EXPECT_TRUE(test.Click(9).ends_with(end)) << left << " " << right << " " << percent << test.window.att;
  }
}

}  // namespace
}  // namespace sondrix
