#include "apps/serve/access_log.h"

#include <array>
#include <ctime>

#include "kit/files/printable.h"
#include "kit/request/json_text.h"
#include "kit/request/values.h"

namespace vexel::serve {

namespace {

constexpr std::size_t kLongestTarget = 2000;

std::string TimeText(std::chrono::system_clock::time_point time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  std::tm parts{};
  ::gmtime_r(&seconds, &parts);
  std::array<char, sizeof "2026-01-01T00:00:00Z"> text;
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  return {text.data(), length};
}

double Milliseconds(std::chrono::microseconds duration) {
  return std::chrono::duration<double, std::milli>(duration).count();
}

std::string TextLine(const LogEntry& entry) {
  std::string line = TimeText(entry.time) + ' ';
  line.append(entry.client).append(" \"");
  std::string asked(entry.method.empty() ? "-" : entry.method);
  if (!entry.target.empty()) asked.append(" ").append(entry.target);
  // A quote would end what is quoted.
  for (const char c : Printable(asked)) line.append(c == '"' ? "%22" : std::string(1, c));
  line += "\" " + std::to_string(static_cast<int>(entry.status)) + ' ';
  return line + std::to_string(entry.bytes) + ' ' + NumberText(Milliseconds(entry.duration)) +
         "ms\n";
}

std::string JsonLine(const LogEntry& entry) {
  std::string line = "{\"time\": ";
  AppendJson(line, TimeText(entry.time));
  const auto append = [&](std::string_view name, std::string_view text) {
    line.append(", \"").append(name).append("\": ");
    AppendJson(line, text);
  };
  append("client", entry.client);
  append("method", Printable(entry.method));
  append("target", Printable(entry.target));
  line += ", \"status\": " + std::to_string(static_cast<int>(entry.status));
  line += ", \"bytes\": " + std::to_string(entry.bytes);
  return line + ", \"ms\": " + NumberText(Milliseconds(entry.duration)) + "}\n";
}

}  // namespace

std::string LogLine(const LogEntry& entry, LogForm form) {
  LogEntry shown = entry;
  shown.target = entry.target.substr(0, kLongestTarget);
  return form == LogForm::json ? JsonLine(shown) : TextLine(shown);
}

}  // namespace vexel::serve
