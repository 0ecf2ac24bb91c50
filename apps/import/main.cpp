// The program `vexel-import`: makes maps and data files of what people have.

#include <cpl_error.h>

#include <cstdio>
#include <string_view>

#include "account.h"
#include "commands.h"
#include "host.h"
#include "import.h"
#include "kit/files/printable.h"
#include "options.h"
#include "program.h"
#include "vexel/version.h"

namespace vexel::cli {

const Program kProgram{"vexel-import", "vexel import", "gif"};

namespace {

int Run(int argc, const char* const* argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--version") {
    std::puts("vexel-import " VEXEL_VERSION);
    return kDone;
  }
  import::Options options;
  if (!import::ReadOptions(options, argc, argv)) return kDone;
  CPLSetErrorHandler(CPLQuietErrorHandler);
  CliHost host;
  const CurrentHost current(host);
  host.SetProgressWanted(!options.quiet);
  host.SetRemarksWanted(!options.quiet);
  const import::Account account = import::Import(options, host);
  if (!options.quiet) {
    for (const std::string& line : import::AccountLines(account)) Say(line);
  }
  if (options.json) std::fputs(import::AccountJson(account).c_str(), stdout);
  if (account.files.empty()) {
    Say("nothing was written, as --strict takes none of this");
    return kFailed;
  }
  return kDone;
}

}  // namespace

}  // namespace vexel::cli

int main(int argc, char** argv) { return vexel::cli::RunToStatus(vexel::cli::Run, argc, argv, ""); }
