// How the server was started.

#ifndef VEXEL_APPS_SERVE_OPTIONS_H_
#define VEXEL_APPS_SERVE_OPTIONS_H_

#include <cstddef>
#include <string>
#include <vector>

#include "apps/serve/access_log.h"

namespace vexel::serve {

struct Options {
  std::vector<std::string> sources;  // data files, and folders of them
  std::string host = "127.0.0.1";    // an address of this machine
  int port = 8080;                   // 0: any that is free
  std::vector<std::string> serverNames;
  std::string base;  // base path without a slash at its end
  int threads = 0;   // that draw; 0: as many as the machine runs at once
  std::size_t cacheBytes = std::size_t{64} << 20;
  std::size_t connections = 1000;
  std::size_t waiting = 256;  // answers that wait to be made
  LogForm log = LogForm::text;
};

// False when only help was wanted. Throws an Error.
bool ReadOptions(Options& options, int argc, const char* const* argv);

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_OPTIONS_H_
