#include "kit/files/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vexel/platform/file.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "kit/files/outputs.h"
#include "kit/files/printable.h"
#include "kit/request/error.h"

namespace vexel {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024;

std::string SystemReason() { return std::strerror(errno); }

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ > STDERR_FILENO) ::close(number_);
  }
  int Get() const { return number_; }

 private:
  int number_;
};

// Calls `take` with block after block of what can be read.
template <typename Take>
void ReadBlocks(int descriptor, const std::string& name, std::size_t most, Take take) {
  std::vector<char> block(kBlock);
  for (std::size_t total = 0;;) {
    const ssize_t got = ::read(descriptor, block.data(), block.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) throw Failed(name, SystemReason());
    if (got == 0) return;
    const auto size = static_cast<std::size_t>(got);
    if (size > most - total) {
      throw Failed(name, "has more than " + std::to_string(most) + " bytes");
    }
    total += size;
    take(std::string_view(block.data(), size));
  }
}

// What a regular file promises to hold, so that its text need not grow; 0 for other files.
std::size_t SizeOf(int descriptor) {
  struct stat status {};
  const bool isKnown = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  return isKnown ? static_cast<std::size_t>(status.st_size) : 0;
}

std::string ReadAll(int descriptor, const std::string& name, std::size_t most) {
  std::string text;
  text.reserve(std::min(SizeOf(descriptor), most));
  ReadBlocks(descriptor, name, most, [&](std::string_view block) { text += block; });
  return text;
}

void WriteAll(int descriptor, const std::string& name, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) throw Failed(name, SystemReason());
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::string FolderInBetween() {
  const char* folder = std::getenv("TMPDIR");
  return folder == nullptr || *folder == '\0' ? "/tmp" : folder;
}

// A file without a name; where the system knows none, one that has lost its name at once.
int OpenNameless(const std::string& folder) {
#ifdef O_TMPFILE
  const int nameless = ::open(folder.c_str(), O_RDWR | O_TMPFILE | O_EXCL | O_CLOEXEC, 0600);
  if (nameless >= 0) return nameless;
#endif
  std::string path = folder + "/vexel-XXXXXX";
  const SignalHold hold;
  const int named = ::mkostemp(path.data(), O_CLOEXEC);
  if (named >= 0) ::unlink(path.c_str());
  return named;
}

}  // namespace

void CheckReadable(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (fs::is_directory(status)) throw Failed(path, "is a folder, not a file");
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    throw Failed(path, "is no regular file");
  }
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (file.Get() < 0) throw Failed(path, SystemReason());
  if (fs::is_regular_file(status) && fs::file_size(path, error) == 0) {
    throw Failed(path, "the file is empty");
  }
}

std::string FolderOf(std::string_view path) {
  return std::string(path.substr(0, path.rfind('/') + 1));
}

std::string WithExtension(std::string_view path, std::string_view extension) {
  return fs::path(path).replace_extension(fs::path(extension)).string();
}

std::string RelativeTo(const std::string& path, const std::string& folder) {
  std::error_code error;
  const auto settled = [&](const fs::path& p) {
    return fs::weakly_canonical(p.empty() ? fs::path(".") : p, error);
  };
  // The name itself may be a link, and stays one.
  const fs::path whole = settled(fs::path(path).parent_path()) / fs::path(path).filename();
  const fs::path relative = whole.lexically_relative(settled(folder));
  return relative.empty() ? path : relative.string();
}

void WriteText(const std::string& name, std::string_view text) {
  if (IsStandard(name)) {
    WriteAll(STDOUT_FILENO, "standard output", text);
    return;
  }
  CFile file;
  OpenOutput(file, name);
  file.Write(text.data(), text.size());
  Finish(file, name);
}

TemporaryFolder::TemporaryFolder(std::string_view fileName) {
  path_ = FolderInBetween() + "/vexel-XXXXXX";
  // Everything that can fail comes before there is a folder to be left behind.
  file_ = path_ + '/' + std::string(fileName);
  if (::mkdtemp(path_.data()) == nullptr) throw Failed(path_, SystemReason());
  std::copy(path_.begin(), path_.end(), file_.begin());
}

TemporaryFolder::~TemporaryFolder() {
  ::unlink(file_.c_str());
  ::rmdir(path_.c_str());
}

LibraryOutput::LibraryOutput(const std::string& name)
    : folder_(IsStandard(name) ? std::make_unique<TemporaryFolder>("output") : nullptr),
      path_(folder_ ? folder_->FilePath() : name),
      isStandard_(folder_ != nullptr) {}

void LibraryOutput::Collect() {
  if (!folder_) return;
  collected_ = ReadFile(path_);
  folder_.reset();
  if (::isatty(STDOUT_FILENO) != 0) collected_ = PrintableLines(std::move(collected_));
}

void LibraryOutput::Deliver() const {
  if (isStandard_) WriteText("-", collected_);
}

StandardInputCopy::StandardInputCopy() {
  const std::string folder = FolderInBetween();
  descriptor_ = OpenNameless(folder);
  if (descriptor_ < 0) throw Failed(folder, SystemReason());
  try {
    path_ = "/proc/self/fd/" + std::to_string(descriptor_);
    if (::access(path_.c_str(), R_OK) != 0) throw Failed(path_, SystemReason());
    ReadBlocks(STDIN_FILENO, "standard input", kMost,
               [&](std::string_view block) { WriteAll(descriptor_, folder, block); });
  } catch (...) {
    ::close(descriptor_);
    throw;
  }
}

StandardInputCopy::~StandardInputCopy() { ::close(descriptor_); }

std::string ReadFile(const std::string& path, std::size_t most) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.Get() < 0) throw Failed(path, SystemReason());
  return ReadAll(file.Get(), path, most);
}

std::string ReadSettings(const std::string& name) {
  constexpr std::size_t kMost = 1'000'000;
  if (IsStandard(name)) return ReadAll(STDIN_FILENO, "standard input", kMost);
  const Descriptor file(::open(name.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.Get() < 0) throw Failed(name, SystemReason());
  return ReadAll(file.Get(), name, kMost);
}

bool IsSameFile(const std::string& a, const std::string& b) {
  if (a.empty() || b.empty() || IsStandard(a) || IsStandard(b)) return a == b;
  std::error_code error;
  if (fs::equivalent(a, b, error)) return true;
  return fs::weakly_canonical(a, error) == fs::weakly_canonical(b, error);
}

SignalHold::SignalHold() {
  sigset_t held;
  sigemptyset(&held);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, number);
  sigprocmask(SIG_BLOCK, &held, &before_);
}

SignalHold::~SignalHold() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

}  // namespace vexel
