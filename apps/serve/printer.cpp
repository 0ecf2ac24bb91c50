#include "apps/serve/printer.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "kit/files/files.h"
#include "kit/files/printable.h"
#include "kit/request/json_request.h"
#include "kit/request/values.h"

namespace vexel::serve {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience{20};
constexpr std::size_t kMostBytes = 256 << 20;
constexpr const char* kProgramName = "vexel-print";

bool IsProgram(const std::string& path) { return ::access(path.c_str(), X_OK) == 0; }

std::optional<std::string> FindProgram() {
  std::array<char, PATH_MAX> own;
  const ssize_t length = ::readlink("/proc/self/exe", own.data(), own.size());
  if (length > 0) {
    std::string beside = FolderOf({own.data(), static_cast<std::size_t>(length)}) + kProgramName;
    if (IsProgram(beside)) return beside;
  }
  const char* const path = std::getenv("PATH");
  for (const std::string_view folder : Split(path == nullptr ? "" : path, ':')) {
    if (!folder.starts_with('/')) continue;
    std::string program = std::string(folder) + '/' + kProgramName;
    if (IsProgram(program)) return program;
  }
  return std::nullopt;
}

// One end of a pipe.
class End {
 public:
  End() = default;
  explicit End(int descriptor) : descriptor_(descriptor) {}
  End(End&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  End& operator=(End&&) = delete;
  ~End() { Close(); }

  int Get() const { return descriptor_; }
  void Set(int descriptor) { descriptor_ = descriptor; }
  bool IsOpen() const { return descriptor_ >= 0; }
  void Close() {
    if (IsOpen()) ::close(std::exchange(descriptor_, -1));
  }

 private:
  int descriptor_ = -1;
};

struct Pipe {
  Pipe() {
    std::array<int, 2> ends;
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw Failed("there are no pipes left");
    read.Set(ends[0]);
    write.Set(ends[1]);
  }

  End read;
  End write;
};

// A nameless file that gives a text, whose reader can go before the end of it.
End TextFile(std::string_view text) {
  End file(::memfd_create("request", MFD_CLOEXEC));
  const bool isWhole =
      file.IsOpen() &&
      ::write(file.Get(), text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
      ::lseek(file.Get(), 0, SEEK_SET) == 0;
  if (!isWhole) throw Failed("there is no memory for the request");
  return file;
}

// A child that reads a text, and whose outputs are taken. Whatever happens, it is gone at the end.
class Child {
 public:
  Child(const std::string& program, const std::vector<std::string>& arguments,
        std::string_view input) {
    Spawn(program, arguments, TextFile(input));
    out_.write.Close();
    err_.write.Close();
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
  }

  // Takes what it says until it has closed both its outputs. False when that takes too long, or too
  // much comes.
  bool Listen(Clock::time_point until) {
    while (out_.read.IsOpen() || err_.read.IsOpen()) {
      const auto left =
          std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
      if (left <= 0 || out.size() + err.size() > kMostBytes) return false;
      std::array<pollfd, 2> ends{pollfd{out_.read.Get(), POLLIN, 0},
                                 pollfd{err_.read.Get(), POLLIN, 0}};
      if (::poll(ends.data(), ends.size(), static_cast<int>(left)) < 0 && errno != EINTR) {
        return false;
      }
      if (ends[0].revents != 0) Take(out_.read, out);
      if (ends[1].revents != 0) Take(err_.read, err);
    }
    return true;
  }

  // Its exit status; -1 when a signal ended it, or when it goes on for too long with nothing more
  // to say.
  int Wait(Clock::time_point until) {
    int status = 0;
    while (::waitpid(process_, &status, WNOHANG) == 0) {
      constexpr std::chrono::milliseconds kNap{1};
      if (Clock::now() >= until) return -1;
      std::this_thread::sleep_for(kNap);
    }
    process_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  std::string out;
  std::string err;

 private:
  void Spawn(const std::string& program, std::vector<std::string> arguments, const End& input) {
    std::vector<char*> argv(arguments.size() + 1);
    std::transform(arguments.begin(), arguments.end(), argv.begin(),
                   [](std::string& text) { return text.data(); });
    // Numbers look as they do on the page, whatever the locale of the server.
    std::string locale = "LC_ALL=C.UTF-8";
    std::vector<char*> environment{locale.data()};
    for (char** each = ::environ; *each != nullptr; ++each) {
      if (!std::string_view(*each).starts_with("LC_ALL=")) environment.push_back(*each);
    }
    environment.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, input.Get(), STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, out_.write.Get(), STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, err_.write.Get(), STDERR_FILENO);
    // A connection would otherwise stay open for as long as the child lives.
    ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    sigset_t none;
    ::sigemptyset(&none);
    sigset_t usual;
    ::sigemptyset(&usual);
    ::sigaddset(&usual, SIGPIPE);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &usual);
    ::posix_spawnattr_setflags(&attributes,
                               static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
    const int error = ::posix_spawn(&process_, program.c_str(), &actions, &attributes, argv.data(),
                                    environment.data());
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    if (error != 0) process_ = 0;
    if (error == ENOENT) throw NotInstalled();
    if (error != 0) throw Failed(std::string(kProgramName) + " cannot be started");
  }

  static void Take(End& end, std::string& to) {
    std::array<char, 1 << 16> bytes;
    const ssize_t count = ::read(end.Get(), bytes.data(), bytes.size());
    if (count > 0) to.append(bytes.data(), static_cast<std::size_t>(count));
    if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) end.Close();
  }

  Pipe out_;
  Pipe err_;
  pid_t process_ = 0;
};

// The last line that a program said, without its name.
std::string LastLine(std::string_view said) {
  while (said.ends_with('\n')) said.remove_suffix(1);
  const std::size_t end = said.rfind('\n');
  if (end != std::string_view::npos) said.remove_prefix(end + 1);
  constexpr std::string_view kName = "vexel-print: ";
  if (said.starts_with(kName)) said.remove_prefix(kName.size());
  return Printable(said);
}

}  // namespace

Printer::Printer() : Printer(FindProgram(), kPatience) {}

std::string Printer::Print(const Request& request, const std::string& medium) const {
  if (!program_) throw NotInstalled();
  Child child(*program_,
              {kProgramName, "--view", "-", "--output", "-", "--format", medium, "--quiet"},
              JsonText(request));
  const Clock::time_point until = Clock::now() + patience_;
  if (!child.Listen(until)) {
    throw Failed("the page took too long to print");
  }
  if (child.Wait(until) == 0 && !child.out.empty()) return std::move(child.out);
  throw Failed("the page could not be printed: " + LastLine(child.err));
}

}  // namespace vexel::serve
