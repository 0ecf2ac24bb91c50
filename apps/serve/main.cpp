// The program `vexel-serve`: the pages of data sets in a browser.

#include <cstdio>
#include <string>
#include <string_view>

#include "apps/serve/catalog.h"
#include "apps/serve/options.h"
#include "apps/serve/printer.h"
#include "apps/serve/server.h"
#include "commands.h"
#include "host.h"
#include "program.h"
#include "vexel/version.h"

namespace vexel::cli {

const Program kProgram{"vexel-serve", "vexel serve", "gif"};

namespace {

int Run(int argc, const char* const* argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--version") {
    std::puts("vexel-serve " VEXEL_VERSION);
    return kDone;
  }
  serve::Options options;
  if (!serve::ReadOptions(options, argc, argv)) return kDone;
  serve::Catalog catalog(options.sources);
  catalog.Load();
  for (const serve::DataSet& set : catalog.Describe()) {
    if (!set.trouble.empty()) Say(set.trouble);
  }
  serve::Serve(options, catalog, serve::Printer(), [](const std::string& address) {
    std::puts(address.c_str());
    std::fflush(stdout);
  });
  return kDone;
}

}  // namespace

}  // namespace vexel::cli

int main(int argc, char** argv) { return vexel::cli::RunToStatus(vexel::cli::Run, argc, argv, ""); }
