// Running a program and seeing what it says.

#ifndef VEXEL_TESTS_SUPPORT_RUN_H_
#define VEXEL_TESTS_SUPPORT_RUN_H_

#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vexel::test {

struct RunOptions {
  std::string folder = ".";                   // to work in
  std::string_view input = {};                // on standard input
  bool onTerminal = false;                    // all that it says comes out of one
  std::optional<rlim_t> fileLimit = {};       // no file can grow beyond so many bytes
  std::vector<std::string> environment = {};  // "NAME=value", besides ours
};

struct RunResult {
  int status = 0;  // of the exit, or 128 and the number of the signal
  std::string out;
  std::string err;
};

// A nameless file as one end of a stream. Files, unlike pipes, never wait for a reader.
class StreamFile {
 public:
  StreamFile() : file_(std::tmpfile(), &std::fclose) {
    if (file_ == nullptr) throw std::runtime_error("no temporary file");
  }

  int Descriptor() const { return ::fileno(file_.get()); }

  void Fill(std::string_view bytes) {
    if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), file_.get());
    std::rewind(file_.get());
  }

  std::string Text() {
    std::rewind(file_.get());
    std::string text;
    for (int c = std::getc(file_.get()); c != EOF; c = std::getc(file_.get())) {
      text += static_cast<char>(c);
    }
    return text;
  }

 private:
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

// A terminal that passes everything on as it is.
class Terminal {
 public:
  Terminal() {
    termios plain{};
    ::cfmakeraw(&plain);
    if (::openpty(&here_, &there_, nullptr, &plain, nullptr) != 0) {
      throw std::runtime_error("no terminal");
    }
  }
  ~Terminal() { ::close(here_); }

  int Descriptor() const { return there_; }

  // All that is said on it until nobody has it open.
  std::string Text() {
    ::close(there_);
    std::string text;
    for (char c = 0; ::read(here_, &c, 1) == 1;) text += c;
    return text;
  }

 private:
  int here_ = -1;
  int there_ = -1;
};

// In the child: becomes the program, in the plain locale. A program that hangs is ended.
[[noreturn]] inline void BecomeProgram(const std::vector<char*>& argv, const RunOptions& options) {
  constexpr unsigned kSecondsToHang = 120;
  ::alarm(kSecondsToHang);
  std::signal(SIGINT, SIG_DFL);  // a shell's job in the background has it ignored
  ::setenv("LC_ALL", "C", 1);
  for (const std::string& variable : options.environment) {
    ::putenv(const_cast<char*>(variable.c_str()));
  }
  if (options.fileLimit) {
    const rlimit limit{*options.fileLimit, *options.fileLimit};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, SIG_IGN);
    // A measured program would leave a cut profile, which no later one could add to.
    ::setenv("LLVM_PROFILE_FILE", "/dev/null", 1);
  }
  if (::chdir(options.folder.c_str()) == 0) ::execv(argv.front(), argv.data());
  ::_exit(127);
}

inline RunResult RunProgram(const std::string& program, std::vector<std::string> arguments,
                            const RunOptions& options = {}) {
  std::vector<char*> argv{const_cast<char*>(program.c_str())};
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  StreamFile in;
  StreamFile out;
  StreamFile err;
  in.Fill(options.input);
  std::optional<Terminal> terminal;
  if (options.onTerminal) terminal.emplace();

  const pid_t child = ::fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    ::dup2(in.Descriptor(), STDIN_FILENO);
    ::dup2(terminal ? terminal->Descriptor() : out.Descriptor(), STDOUT_FILENO);
    ::dup2(terminal ? terminal->Descriptor() : err.Descriptor(), STDERR_FILENO);
    if (terminal) ::close(terminal->Descriptor());
    BecomeProgram(argv, options);
  }
  const std::string shown = terminal ? terminal->Text() : "";
  int status = 0;
  if (::waitpid(child, &status, 0) != child) throw std::runtime_error("the process is lost");
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
          terminal ? shown : out.Text(), err.Text()};
}

}  // namespace vexel::test

#endif  // VEXEL_TESTS_SUPPORT_RUN_H_
