#include "other_program.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <vector>

#include "commands.h"
#include "host.h"
#include "kit/files/files.h"
#include "kit/request/error.h"

namespace vexel::cli {

namespace {

std::string OwnFolder() {
  std::array<char, PATH_MAX> path;
  const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
  if (length <= 0) return {};
  return FolderOf({path.data(), static_cast<std::size_t>(length)});
}

// Makes a text what standard input has to give.
void FeedStandardInput(std::string_view text) {
  const int file = ::memfd_create("input", 0);
  const auto length = static_cast<ssize_t>(text.size());
  if (file < 0 || ::write(file, text.data(), text.size()) != length ||
      ::lseek(file, 0, SEEK_SET) != 0 || ::dup2(file, STDIN_FILENO) < 0) {
    throw Failed("standard input cannot be handed on");
  }
  if (file != STDIN_FILENO) ::close(file);
}

}  // namespace

int RunOtherProgram(const std::string& name, std::string_view purpose, const char* const* argv,
                    std::string_view input) {
  std::vector<std::string> texts{name};
  for (const char* const* argument = argv + 1; *argument != nullptr; ++argument) {
    texts.emplace_back(*argument);
  }
  std::vector<char*> arguments(texts.size() + 1);
  std::transform(texts.begin(), texts.end(), arguments.begin(),
                 [](std::string& text) { return text.data(); });
  if (!input.empty()) FeedStandardInput(input);
  std::fflush(nullptr);
  const std::string beside = OwnFolder() + name;
  ::execv(beside.c_str(), arguments.data());
  ::execvp(name.c_str(), arguments.data());
  Say({purpose, " ", name, ", which is not installed; it comes with the package of that name"});
  return kNotInstalled;
}

}  // namespace vexel::cli
