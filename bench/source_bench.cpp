#include "app/source_notes.h"
#include "samples/bulk.h"

#include <benchmark/benchmark.h>
#include <filesystem>

namespace sondrix {
namespace {

// A choice of a source in the window, of a length in bytes.
void NotesOnASource(benchmark::State& state) {
  const auto path = std::filesystem::temp_directory_path() / "sondrix_bench_notes.sl2";
  WriteBulk(path.string(), state.range(0), true);
  for (auto _ : state) benchmark::DoNotOptimize(NotesOn(path.string(), LangEnglish));
  std::filesystem::remove(path);
}
BENCHMARK(NotesOnASource)->Arg(3'000'000)->Arg(3'000'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sondrix
