// The sub-commands. Each takes its own name and what stands behind it, and gives an exit status;
// what goes wrong is thrown.

#ifndef VEXEL_APPS_VEXEL_COMMANDS_H_
#define VEXEL_APPS_VEXEL_COMMANDS_H_

#include "host.h"
#include "kit/publish/media.h"

namespace vexel::cli {

enum ExitStatus : int { kDone = 0, kFailed = 1, kWrongUsage = 2, kNotInstalled = 3 };

// What makes pictures of that kind in this program; null where another program has to. Each program
// has its own.
Painter PainterOf(const Medium& medium);

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
