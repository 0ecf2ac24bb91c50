// Natural breaks: the one method of finding classes that takes more than a walk through the values.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "kit/classes/classes.h"

namespace {

// Incomes and populations are spread like this: many small, few large.
std::vector<double> SkewedValues(std::size_t count) {
  std::mt19937_64 random(20240611);
  std::lognormal_distribution<double> spread(10.0, 1.5);
  std::vector<double> values(count);
  std::generate(values.begin(), values.end(), [&] { return spread(random); });
  std::sort(values.begin(), values.end());
  return values;
}

void NaturalBreaks(benchmark::State& state) {
  const std::vector<double> values = SkewedValues(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(vexel::NaturalClasses(values, vexel::kMostClasses));
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(NaturalBreaks)
    ->Unit(benchmark::kMillisecond)
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000)
    ->Complexity(benchmark::oNLogN);

}  // namespace
