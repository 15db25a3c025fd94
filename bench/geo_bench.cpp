#include "geo/mercator.h"
#include "geo/utm.h"
#include "geo/vincenty.h"

#include <benchmark/benchmark.h>
#include <cstdint>

namespace sondrix {
namespace {

// A boat that moves: no two rounds see the same position.
void BM_MercatorToDegrees(benchmark::State& state) {
  std::int32_t x = 4160000, y = 7560000;
  for (auto _ : state) {
    benchmark::DoNotOptimize(MercY2Lat(++y, 9));
    benchmark::DoNotOptimize(MercX2Lon(++x, 9));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_MercatorToDegrees);

void BM_DestPoint(benchmark::State& state) {
  double azimuth = 0;
  for (auto _ : state) {
    azimuth += 0.001;
    benchmark::DoNotOptimize(DestPoint(56.123456789, 37.987654321, azimuth, 1.5, 9));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DestPoint);

void BM_Ll2Utm(benchmark::State& state) {
  double lon = 37;
  for (auto _ : state) {
    lon += 1e-6;
    benchmark::DoNotOptimize(Ll2Utm(56.123456789, lon));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Ll2Utm);

}  // namespace
}  // namespace sondrix
