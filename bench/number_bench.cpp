#include "core/number_text.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>

namespace sondrix {
namespace {

// What the columns of a converted echogram hold: degrees with nine decimals, metres with two.
constexpr std::array<double, 8> Degrees = {56.123456789, 37.987654321, -0.5,  .000000125,
                                           60.000000001, -179.99999,   12.25, 48.1};
constexpr std::array<float, 8> Depths = {3.05F, 12.4F, 0.35F, 101.92F, 7.0F, 0.01F, 28.66F, 4.5F};

template <typename Number>
void NumTextOf(benchmark::State& state, const std::array<Number, 8>& values) {
  std::string out;
  for (auto _ : state) {
    out.clear();
    for (Number value : values) AppendNumText(out, value);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}

void BM_NumTextDegrees(benchmark::State& state) { NumTextOf(state, Degrees); }
BENCHMARK(BM_NumTextDegrees);

void BM_NumTextDepths(benchmark::State& state) { NumTextOf(state, Depths); }
BENCHMARK(BM_NumTextDepths);

}  // namespace
}  // namespace sondrix
