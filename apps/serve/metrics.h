// What the server counts, and how it tells.

#ifndef VEXEL_APPS_SERVE_METRICS_H_
#define VEXEL_APPS_SERVE_METRICS_H_

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "apps/serve/answer.h"

namespace vexel::serve {

// What is so at the moment.
struct Gauges {
  std::size_t cacheBytes = 0;
  std::size_t cacheAnswers = 0;
  std::size_t connections = 0;
  std::size_t jobsWaiting = 0;
  std::size_t sets = 0;        // that can be shown
  std::uint64_t failures = 0;  // of loading
};

// For one thread.
class Metrics {
 public:
  void CountAnswer(std::string_view kind, Status status, std::chrono::microseconds duration);

  std::uint64_t hits = 0;
  std::uint64_t misses = 0;
  std::uint64_t refusedConnections = 0;
  std::uint64_t refusedJobs = 0;

  // Prometheus' text format.
  std::string Text(const Gauges& gauges) const;

 private:
  // Seconds; what takes longer counts above the last.
  static constexpr std::array kBounds{.0005, .001, .0025, .005, .01, .025, .05,
                                      .1,    .25,  .5,    1.,   2.5, 5.,   10.};

  std::map<std::pair<std::string_view, int>, std::uint64_t>
      answers_;  // by kind and class of status
  std::array<std::uint64_t, kBounds.size()> within_{};
  std::uint64_t count_ = 0;
  std::chrono::microseconds total_{};
};

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_METRICS_H_
