// What the benchmarks of this folder have in common.

#ifndef VEXEL_BENCH_MEASURE_H_
#define VEXEL_BENCH_MEASURE_H_

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <utility>

#include "scale.h"

namespace vexel {

// The sizes measured, in copies of the sample.
inline void AllSizes(benchmark::internal::Benchmark* measured) {
  measured->Unit(benchmark::kMillisecond)->Arg(1)->Arg(4)->Arg(16)->Arg(32);
}

inline const Sample& SampleOf(const benchmark::State& state) {
  return GetSample(static_cast<int>(state.range(0)));
}

// What one round of the measured work went through.
inline void CountAreas(benchmark::State& state, int areas) {
  state.counters["per_area"] = benchmark::Counter(
      areas, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
inline void CountBytes(benchmark::State& state, std::uintmax_t bytes) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}
inline void CountFile(benchmark::State& state, const std::filesystem::path& file) {
  CountBytes(state, std::filesystem::file_size(file));
}

// Measures `make`, which returns what it has made; the end of that is not measured.
template <typename Make>
void MeasureMaking(benchmark::State& state, Make make) {
  for (auto _ : state) {
    auto made = make();
    benchmark::DoNotOptimize(made);
    state.PauseTiming();
    { const auto end = std::move(made); }
    state.ResumeTiming();
  }
}

}  // namespace vexel

#endif  // VEXEL_BENCH_MEASURE_H_
