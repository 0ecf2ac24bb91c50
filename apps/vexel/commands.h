// The sub-commands. Each takes its own name and what stands behind it, and gives an exit status;
// what goes wrong is thrown.

#ifndef VEXEL_APPS_VEXEL_COMMANDS_H_
#define VEXEL_APPS_VEXEL_COMMANDS_H_

#include "host.h"

namespace vexel::cli {

enum ExitStatus : int { kDone = 0, kFailed = 1, kWrongUsage = 2 };

int Render(int argc, const char* const* argv, CliHost& host);
int Compile(int argc, const char* const* argv, CliHost& host);
int Decompile(int argc, const char* const* argv, CliHost& host);
int Convert(int argc, const char* const* argv, CliHost& host);
int Info(int argc, const char* const* argv, CliHost& host);
int Tree(int argc, const char* const* argv, CliHost& host);
int ShowPalettes(int argc, const char* const* argv, CliHost& host);
int Check(int argc, const char* const* argv, CliHost& host);
int Locate(int argc, const char* const* argv, CliHost& host);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_COMMANDS_H_
