// Programs that stand beside this one, and do what takes heavier libraries.

#ifndef VEXEL_APPS_VEXEL_OTHER_PROGRAM_H_
#define VEXEL_APPS_VEXEL_OTHER_PROGRAM_H_

#include <string>
#include <string_view>

namespace vexel::cli {

// Runs a program, whose package has its name, in the place of this one: the one in this program's
// own folder, or else the one that the shell would find. It gets the arguments behind argv[0], and
// `input`, unless it is empty, as its standard input. Returns only when there is no such program,
// after saying so, with the exit status for that. `purpose` begins the sentence: "PNG pages are
// drawn by".
int RunOtherProgram(const std::string& name, std::string_view purpose, const char* const* argv,
                    std::string_view input = {});

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_OTHER_PROGRAM_H_
