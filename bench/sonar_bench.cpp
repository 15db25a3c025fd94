#include "app/batch/batch_window.h"
#include "app/batch/transcript.h"
#include "app/session.h"
#include "core/files.h"
#include "echo/depth_check.h"
#include "jobs/clicks.h"
#include "samples/bulk.h"
#include "samples/lake.h"
#include "sonar/job_sl.h"
#include "sonar/layout/sl_format.h"
#include "sonar/layout/sl_frame.h"
#include "sonar/layout/sl_source.h"
#include "sonar/layout/sl_verdict.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace sondrix {
namespace {

constexpr std::int64_t BulkLength = 100'000'000;

// Sources that are made once for all benchmarks and deleted at the end.
class Sources {
 public:
  Sources() {
    std::filesystem::create_directories(folder_);
    WriteBulk(Path("bulk.sl2"), BulkLength, false);
    OutputFile(Path("lake.sl3")).Write(LakeEchogram());
  }
  ~Sources() { std::filesystem::remove_all(folder_); }
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

 private:
  std::filesystem::path folder_ = std::filesystem::temp_directory_path() / "sondrix_bench";
};

const Sources& TheSources() {
  static const Sources sources;
  return sources;
}

// A session whose window shows nothing, set up for one of the sources.
struct BenchRun {
  explicit BenchRun(const std::string& source, Channel channel = Channel::Downscan)
      : window({}, transcript), session(window) {
    ApplyLanguage(session, LangEnglish);
    session.settings.Source = TheSources().Path(source);
    session.settings.TargetPath = TheSources().Path("");
    session.settings.TargetName = "bench";
    session.settings.DistDiff = "0";
    session.settings.UseDcm = false;
    session.settings.MakeGraf = false;
    ChannelClick(session.run, channel);
  }
  Transcript transcript{true};
  BatchWindow window;
  Session session;
};

std::size_t LinesOf(const std::string& path) {
  const std::string text = ReadWhole(path);
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

// Frames of all channels, stepped through and judged by their lead fields.
void BM_LeadAndVerdict(benchmark::State& state) {
  const std::string path = TheSources().Path("bulk.sl2");
  std::int64_t frames = 0;
  for (auto _ : state) {
    SlSource source(path);
    const SlFormat format = SlFormatOf(2);
    while (source.FilePosition() < source.FileLength()) {
      SlLeadFields lead = SlLead(source.Bytes(source.Pos, format.offsets->leadEnd), format);
      lead.SampleCount = EffectiveSamples(lead, Channel::Downscan, format);
      benchmark::DoNotOptimize(SlCheck(lead, Channel::Downscan, 1920));
      source.Pos += lead.FrameSize;
      ++frames;
    }
  }
  state.SetItemsProcessed(frames);
}
BENCHMARK(BM_LeadAndVerdict)->Unit(benchmark::kMillisecond);

enum Kind { Plain, Pictures, Crop };

// The whole job; items are frames of the selected channel, bytes are those of the source.
void BM_JobSl(benchmark::State& state) {
  BenchRun bench("bulk.sl2");
  bench.session.settings.MakeGraf = state.range(0) == Pictures;
  bench.session.settings.MakeCut = state.range(0) == Crop;
  for (auto _ : state) {
    GoClick(bench.session.run);
    if (!bench.window.Att().ends_with(" * done")) state.SkipWithError("the run didn't end well");
  }
  const auto frames = static_cast<std::int64_t>(LinesOf(TheSources().Path("bench.csv")));
  state.SetItemsProcessed(state.iterations() * frames);
  state.SetBytesProcessed(state.iterations() * BulkLength);
}
BENCHMARK(BM_JobSl)->ArgName("kind")->Arg(Plain)->Arg(Pictures)->Arg(Crop)->Unit(benchmark::kMillisecond);

// A frame of 1920 samples shown and checked, nothing saved.
void BM_ShowAndCheck(benchmark::State& state) {
  BenchRun bench("bulk.sl2");
  bench.session.settings.MakeGraf = true;
  std::vector<std::uint8_t> samples(1920);
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<std::uint8_t>(i * 37);
  PrepareViews(bench.session.pictures, Channel::Downscan, 1920);
  DepthState depth;
  std::string badLog;
  for (auto _ : state) {
    const float scaleM = ShownScale(Channel::Downscan, 30.48F);
    ShowFrame(bench.session.pictures, Channel::Downscan, samples, scaleM, 10, 0, 0, bench.window);
    DepthCheck(bench.session.run, depth,
               {.Samples = samples,
                .Selected = Channel::Downscan,
                .DepthM = 10,
                .ScaleM = scaleM,
                .FrameCounter = 2,
                .FilePosition = 8,
                .DefectLevel = 1000,
                .Progress = " 50%  scan 2 ^00:00:01"},
               badLog);
    badLog.clear();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ShowAndCheck);

// The 3D points of the lake, as lines of the CSV; with pictures and without.
void BM_Points3D(benchmark::State& state) {
  BenchRun bench("lake.sl3", Channel::Scan3D);
  bench.session.settings.MakeGraf = state.range(0) != 0;
  for (auto _ : state) GoClick(bench.session.run);
  const auto points = static_cast<std::int64_t>(LinesOf(TheSources().Path("bench.csv")));
  state.SetItemsProcessed(state.iterations() * points);
}
BENCHMARK(BM_Points3D)->ArgName("pictures")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sondrix
