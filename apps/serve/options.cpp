#include "apps/serve/options.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "arguments.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/values.h"

namespace vexel::serve {

namespace {

constexpr int kMostPort = 65535;
constexpr int kMostThreads = 256;
constexpr int kMostConnections = 100'000;
constexpr int kMostMegabytes = 1 << 20;

// "/maps" of "maps", "/maps/"; empty of "/".
std::string ParseBase(std::string_view text) {
  while (text.starts_with('/')) text.remove_prefix(1);
  while (text.ends_with('/')) text.remove_suffix(1);
  if (text.empty()) return {};
  constexpr std::string_view kPlain =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~/";
  const bool isPlain = text.find_first_not_of(kPlain) == std::string_view::npos;
  const auto segments = Split(text, '/');
  const bool hasDots = std::any_of(segments.begin(), segments.end(), [](std::string_view segment) {
    return segment.empty() || segment == "." || segment == "..";
  });
  if (!isPlain || hasDots) {
    throw WrongRequest(Quoted(text) + " is no path of plain words, as in /maps");
  }
  return '/' + std::string(text);
}

LogForm ParseLog(std::string_view text) {
  constexpr std::array kForms{std::pair{std::string_view("text"), LogForm::text},
                              std::pair{std::string_view("json"), LogForm::json},
                              std::pair{std::string_view("none"), LogForm::none}};
  const auto* found = std::find_if(kForms.begin(), kForms.end(),
                                   [=](const auto& form) { return form.first == text; });
  if (found == kForms.end()) throw WrongRequest(Quoted(text) + " is none of text, json, none");
  return found->second;
}

bool IsAddress(const std::string& text) {
  std::array<unsigned char, sizeof(in6_addr)> bytes;
  return ::inet_pton(AF_INET, text.c_str(), bytes.data()) == 1 ||
         ::inet_pton(AF_INET6, text.c_str(), bytes.data()) == 1;
}

// "localhost" is an address to those who type it.
std::string ParseHost(std::string_view text) {
  std::string host(text == "localhost" ? "127.0.0.1" : text);
  if (!IsAddress(host)) throw WrongRequest(Quoted(host) + " is no address, as in 127.0.0.1 or ::1");
  return host;
}

void CheckRemote(const Options& options, bool allowRemote) {
  const bool isLoopback = options.host == "::1" || options.host.starts_with("127.");
  if (isLoopback || allowRemote) return;
  throw WrongRequest("--host " + options.host +
                     " lets other machines in, which takes --allow-remote");
}

}  // namespace

bool ReadOptions(Options& options, int argc, const char* const* argv) {
  cli::Arguments arguments(
      "vexel serve",
      "Show data sets in a browser: choose variables, classes and colours, go down into areas and"
      " up again, compare, search, download. Prints the address once it can be opened.",
      "vexel serve counties.mdf\n"
      "  vexel serve --port 0 folder-of-data-files more.mdf\n"
      "  vexel serve data --base-path /maps --server-name maps.example.org --log json");
  arguments.Positionals("DATA", "Map data files, and folders of them", options.sources);
  const auto number = [](auto& to, int least, int most) {
    return [&to, least, most](std::string_view text) {
      to = static_cast<std::remove_reference_t<decltype(to)>>(ParseIntBetween(text, least, most));
    };
  };
  bool allowRemote = false;
  arguments.Group("Where");
  arguments.Option("--port", "NUMBER", "0 for any that is free [8080]",
                   number(options.port, 0, kMostPort));
  arguments.Option("--host", "ADDRESS", "Of this machine [127.0.0.1]",
                   [&](std::string_view text) { options.host = ParseHost(text); });
  arguments.Flag("--allow-remote", "Let other machines in, with --host", allowRemote);
  arguments.Repeated("--server-name", "NAME", "A name under which browsers reach the server",
                     [&](std::string_view text) { options.serverNames.emplace_back(text); });
  arguments.Option("--base-path", "PATH", "What all addresses begin with, as in /maps",
                   [&](std::string_view text) { options.base = ParseBase(text); });
  arguments.Group("How");
  arguments.Option("--threads", "NUMBER", "That draw [as many as the machine runs at once]",
                   number(options.threads, 1, kMostThreads));
  arguments.Option("--cache", "MB", "For finished answers [64]", [&](std::string_view text) {
    options.cacheBytes = static_cast<std::size_t>(ParseIntBetween(text, 0, kMostMegabytes)) << 20U;
  });
  arguments.Option("--connections", "NUMBER", "At most at a time [1000]",
                   number(options.connections, 1, kMostConnections));
  arguments.Option("--log", "WORD", "What to say of each answer: text, json, none [text]",
                   [&](std::string_view text) { options.log = ParseLog(text); });
  if (!arguments.Parse(argc, argv)) return false;
  CheckRemote(options, allowRemote);
  return true;
}

}  // namespace vexel::serve
