// The report of a run: what was measured on, one line for each benchmark, the ratios that matter.

#ifndef VEXEL_BENCH_TABLE_H_
#define VEXEL_BENCH_TABLE_H_

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vexel {

// Times are processor time, which other programs on the machine disturb least; of the repetitions
// of a benchmark the median and the least are told.
class TableReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  struct Result {
    std::string name;
    std::int64_t place = 0;  // in the order in which the benchmarks stand in the sources
    double milliseconds = 0.0;
    double least = 0.0;
    double perArea = 0.0;         // seconds, 0 where areas are not counted
    double bytesPerSecond = 0.0;  // 0 where bytes are not
  };

  const Result* Find(std::string_view name) const;
  void PrintResults() const;
  void PrintRatios() const;
  void PrintGrowth() const;
  void PrintAreaLines() const;

  std::vector<Result> results_;
};

}  // namespace vexel

#endif  // VEXEL_BENCH_TABLE_H_
