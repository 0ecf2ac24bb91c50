#include "apps/serve/metrics.h"

#include "kit/request/values.h"

namespace vexel::serve {

namespace {

void AppendHead(std::string& text, std::string_view name, std::string_view type,
                std::string_view help) {
  text.append("# HELP ").append(name).append(" ").append(help);
  text.append("\n# TYPE ").append(name).append(" ").append(type).append("\n");
}

void AppendOne(std::string& text, std::string_view name, std::string_view type,
               std::string_view help, std::uint64_t value) {
  AppendHead(text, name, type, help);
  text.append(name).append(" ").append(std::to_string(value)).append("\n");
}

double Seconds(std::chrono::microseconds duration) {
  return std::chrono::duration<double>(duration).count();
}

}  // namespace

void Metrics::CountAnswer(std::string_view kind, Status status,
                          std::chrono::microseconds duration) {
  constexpr int kClass = 100;
  ++answers_[{kind, static_cast<int>(status) / kClass}];
  ++count_;
  total_ += duration;
  for (std::size_t i = 0; i < kBounds.size(); ++i) {
    if (Seconds(duration) <= kBounds.at(i)) ++within_.at(i);
  }
}

std::string Metrics::Text(const Gauges& gauges) const {
  std::string text;
  constexpr std::string_view kRequests = "vexel_requests_total";
  AppendHead(text, kRequests, "counter", "Answers by kind and class of status.");
  for (const auto& [key, count] : answers_) {
    text.append(kRequests).append("{kind=\"").append(key.first).append("\",status=\"");
    text.append(std::to_string(key.second)).append("xx\"} ").append(std::to_string(count)) += '\n';
  }
  constexpr std::string_view kDuration = "vexel_request_duration_seconds";
  AppendHead(text, kDuration, "histogram", "From the head of a request to the end of its answer.");
  for (std::size_t i = 0; i < kBounds.size(); ++i) {
    text.append(kDuration).append("_bucket{le=\"").append(NumberText(kBounds.at(i)));
    text.append("\"} ").append(std::to_string(within_.at(i))).append("\n");
  }
  text.append(kDuration).append("_bucket{le=\"+Inf\"} ").append(std::to_string(count_)) += '\n';
  text.append(kDuration).append("_sum ").append(NumberText(Seconds(total_))) += '\n';
  text.append(kDuration).append("_count ").append(std::to_string(count_)) += '\n';
  AppendOne(text, "vexel_cache_hits_total", "counter", "Answers found in the cache.", hits);
  AppendOne(text, "vexel_cache_misses_total", "counter", "Answers that had to be made.", misses);
  AppendOne(text, "vexel_cache_bytes", "gauge", "Bytes of the cache in use.", gauges.cacheBytes);
  AppendOne(text, "vexel_cache_answers", "gauge", "Answers in the cache.", gauges.cacheAnswers);
  AppendOne(text, "vexel_connections", "gauge", "Open connections.", gauges.connections);
  AppendOne(text, "vexel_connections_refused_total", "counter",
            "Connections refused because there were too many.", refusedConnections);
  AppendOne(text, "vexel_jobs_waiting", "gauge", "Answers that wait to be made.",
            gauges.jobsWaiting);
  AppendOne(text, "vexel_jobs_refused_total", "counter",
            "Answers not made because too many were waiting.", refusedJobs);
  AppendOne(text, "vexel_sets", "gauge", "Data sets that can be shown.", gauges.sets);
  AppendOne(text, "vexel_load_failures_total", "counter",
            "Times that the files of a data set could not be loaded.", gauges.failures);
  return text;
}

}  // namespace vexel::serve
