// The sub-commands. Each reads its arguments, argv[0] being its own name, does its work and gives
// the exit status, or throws UsageError or Failure.

#ifndef VEXEL_APPS_VEXEL_COMMANDS_H_
#define VEXEL_APPS_VEXEL_COMMANDS_H_

#include "host.h"

namespace vexel::cli {

int Render(CliHost& host, int argc, const char* const* argv);
int Compile(CliHost& host, int argc, const char* const* argv);
int Decompile(CliHost& host, int argc, const char* const* argv);
int Convert(CliHost& host, int argc, const char* const* argv);
int Info(CliHost& host, int argc, const char* const* argv);
int Tree(CliHost& host, int argc, const char* const* argv);
int Locate(CliHost& host, int argc, const char* const* argv);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_COMMANDS_H_
