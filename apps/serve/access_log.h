// A line for each answer.

#ifndef VEXEL_APPS_SERVE_ACCESS_LOG_H_
#define VEXEL_APPS_SERVE_ACCESS_LOG_H_

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include "apps/serve/answer.h"

namespace vexel::serve {

enum class LogForm { text, json, none };

struct LogEntry {
  std::chrono::system_clock::time_point time;
  std::string_view client;
  std::string_view method;
  std::string_view target;
  Status status = Status::ok;
  std::size_t bytes = 0;  // of the body as sent
  std::chrono::microseconds duration{};
};

// With its line end; whatever bytes a request holds, it is one line and steers no terminal.
std::string LogLine(const LogEntry& entry, LogForm form);

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_ACCESS_LOG_H_
