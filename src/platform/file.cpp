#include "platform/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <exception>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/exceptions.h"
#include "platform/host.h"

namespace {

constexpr std::size_t kWriteBuffer = std::size_t{256} * 1024;
constexpr int kNoRegularFile = -1;     // a reason of our own
constexpr int kMostTemporaries = 100;  // of one process for one target

CFileStatus::Time ToTime(const timespec& time) {
  return CFileStatus::Time(std::chrono::seconds(time.tv_sec) +
                           std::chrono::nanoseconds(time.tv_nsec));
}

// The path behind all links that a path names, whether there is a file yet or not, so that a link
// keeps pointing at what is written.
std::string ResolveLinks(std::filesystem::path path) {
  constexpr int kMostLinks = 40;  // those of the system; a circle does not come here
  std::error_code none;
  for (int i = 0; i < kMostLinks; ++i) {
    const std::filesystem::path target = std::filesystem::read_symlink(path, none);
    if (none) break;
    path = path.parent_path() / target;
  }
  return path.string();
}

// Opens without waiting for whoever is at the other end of a pipe. Where another program holds a
// lease on a regular file that would fail instead of waiting for its end.
int OpenToRead(const char* path) {
  constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NOCTTY;
  const int descriptor = ::open(path, kFlags | O_NONBLOCK);
  struct stat status {};
  const bool isHeld = descriptor < 0 && errno == EWOULDBLOCK && ::stat(path, &status) == 0;
  return isHeld && S_ISREG(status.st_mode) ? ::open(path, kFlags) : descriptor;
}

// The name by which the system knows an open file, whether it has another one or not.
class DescriptorPath {
 public:
  explicit DescriptorPath(int descriptor) noexcept {
    constexpr std::string_view kFolder = "/proc/self/fd/";
    char* const digits = std::copy(kFolder.begin(), kFolder.end(), text_.data());
    *std::to_chars(digits, text_.end() - 1, descriptor).ptr = '\0';
  }
  const char* Get() const noexcept { return text_.data(); }

 private:
  std::array<char, 32> text_;
};

}  // namespace

CFile::~CFile() {
  if (!IsOpen()) return;
  if (std::uncaught_exceptions() > exceptionsAtOpen_) {
    Abort();
  } else {
    CFile::Close();
  }
}

int CFile::Open(const char* path, unsigned flags) {
  Abort();
  reason_ = 0;
  exceptionsAtOpen_ = std::uncaught_exceptions();
  const bool opened = (flags & modeWrite) != 0 ? OpenForWriting(path) : OpenForReading(path);
  if (!opened) Forget();
  return opened ? 1 : 0;
}

// Notes the first reason of a failure. Always false.
bool CFile::Refuse(int reason) noexcept {
  if (reason_ == 0) reason_ = reason;
  return false;
}

std::string CFile::GetReason() const {
  if (reason_ == kNoRegularFile) return "Is no regular file";
  return reason_ == 0 ? "" : std::error_code(reason_, std::generic_category()).message();
}

bool CFile::OpenForReading(const char* path) {
  descriptor_ = OpenToRead(path);
  struct stat status {};
  if (descriptor_ < 0 || ::fstat(descriptor_, &status) != 0) return Refuse(errno);
  if (S_ISDIR(status.st_mode)) return Refuse(EISDIR);
  if (!S_ISREG(status.st_mode)) return Refuse(kNoRegularFile);
  // To wait for a regular file is right again: some stores have to fetch it first.
  ::fcntl(descriptor_, F_SETFL, 0);
  length_ = status.st_size;
  return true;
}

bool CFile::OpenForWriting(const char* path) {
  writing_ = true;
  pending_.reserve(kWriteBuffer);
  struct stat status {};
  const bool exists = ::stat(path, &status) == 0;
  if (!exists && (errno != ENOENT || *path == 0)) return Refuse(errno);
  if (exists && S_ISDIR(status.st_mode)) return Refuse(EISDIR);
  if (exists && !S_ISREG(status.st_mode)) {
    descriptor_ = ::open(path, O_WRONLY | O_CLOEXEC);
    return descriptor_ >= 0 || Refuse(errno);
  }
  target_ = ResolveLinks(path);
  // A file that may not be written is not replaced either.
  if (exists && ::access(target_.c_str(), W_OK) != 0) return Refuse(errno);
  if (!OpenTemporary()) return exists && OpenInPlace();
  if (exists) (void)::fchmod(descriptor_, status.st_mode & 0777U);
  return true;
}

bool CFile::OpenTemporary() {
  temporary_ = target_ + ".tmp" + std::to_string(::getpid()) + '-';
  temporary_.reserve(temporary_.size() + 2);  // so that naming it takes no memory
  NumberTemporary(0);
  if (OpenNameless()) return true;
  for (int number = 0; number < kMostTemporaries && descriptor_ < 0; ++number) {
    NumberTemporary(number);
    descriptor_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor_ < 0 && errno != EEXIST) break;
  }
  if (descriptor_ >= 0) return true;
  temporary_.clear();
  return Refuse(errno);
}

// A file that the folder does not show. Not where it could have no name later.
bool CFile::OpenNameless() {
#ifdef O_TMPFILE
  struct stat status {};
  if (::lstat(temporary_.c_str(), &status) != 0 && errno != ENOENT) return false;
  const std::size_t name = target_.rfind('/') + 1;
  const std::string folder = name == 0 ? "." : target_.substr(0, name);
  descriptor_ = ::open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666);
  nameless_ = descriptor_ >= 0 && ::access(DescriptorPath(descriptor_).Get(), F_OK) == 0;
  if (!nameless_ && descriptor_ >= 0) ::close(std::exchange(descriptor_, -1));
#endif
  return nameless_;
}

void CFile::NumberTemporary(int number) {
  std::array<char, 2> digits;
  const auto [end, error] = std::to_chars(digits.begin(), digits.end(), number);
  temporary_.resize(temporary_.rfind('-') + 1);
  temporary_.append(digits.begin(), end);
}

// Gives the nameless file the first name of its target's that is free.
bool CFile::NameTemporary() {
  const DescriptorPath path(descriptor_);
  for (int number = 0; number < kMostTemporaries; ++number) {
    NumberTemporary(number);
    nameless_ =
        ::linkat(AT_FDCWD, path.Get(), AT_FDCWD, temporary_.c_str(), AT_SYMLINK_FOLLOW) != 0;
    if (!nameless_ || errno != EEXIST) break;
  }
  return !nameless_;
}

// The way that is left where the folder takes no new file but the target may be written.
bool CFile::OpenInPlace() {
  descriptor_ = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor_ < 0) return false;
  inPlace_ = true;
  const std::string reason = GetReason();
  reason_ = 0;
  CHost::GetCurrent().Remark(
      {.kind = vexel::RemarkKind::writtenInPlace, .file = target_, .reason = reason});
  return true;
}

std::size_t CFile::Read(void* buffer, std::size_t count) {
  char* to = static_cast<char*>(buffer);
  std::size_t total = 0;
  while (total < count) {
    const ssize_t got = ::read(descriptor_, to + total, count - total);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) failed_ = !Refuse(errno);
    if (got <= 0) break;
    total += static_cast<std::size_t>(got);
  }
  position_ += static_cast<std::int64_t>(total);
  return total;
}

void CFile::Write(const void* bytes, std::size_t count) {
  position_ += static_cast<std::int64_t>(count);
  length_ = position_;
  if (failed_) return;
  const char* from = static_cast<const char*>(bytes);
  if (!inPlace_ && pending_.size() + count > kWriteBuffer) Flush();
  if (!inPlace_ && count >= kWriteBuffer) {
    WriteOut(from, count);
  } else {
    pending_.insert(pending_.end(), from, from + count);
  }
}

void CFile::Flush() {
  WriteOut(pending_.data(), pending_.size());
  pending_.clear();
}

void CFile::WriteOut(const char* bytes, std::size_t count) {
  while (count > 0 && !failed_) {
    const ssize_t written = ::write(descriptor_, bytes, count);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) {
      failed_ = !Refuse(errno);
    } else {
      bytes += written;
      count -= static_cast<std::size_t>(written);
    }
  }
}

int CFile::Close() {
  if (!IsOpen()) return 1;
  const bool whole = !writing_ || MoveIntoPlace();
  Abort();
  return whole ? 1 : 0;
}

bool CFile::MoveIntoPlace() {
  Flush();
  if (failed_) return false;
  // Closing tells of what a write could not, such as a full share. A sync to the medium is left to
  // the system: it guards against a loss of power alone and would cost more than the page.
  if (inPlace_ && ::ftruncate(descriptor_, position_) != 0) return Refuse(errno);
  if (nameless_ && !NameTemporary()) return Refuse(errno);
  if (::close(std::exchange(descriptor_, -1)) != 0) return Refuse(errno);
  if (temporary_.empty()) return true;
  if (::rename(temporary_.c_str(), target_.c_str()) != 0) return Refuse(errno);
  temporary_.clear();
  return true;
}

void CFile::Abort() noexcept {
  if (!temporary_.empty() && !nameless_) ::unlink(temporary_.c_str());
  Forget();
}

void CFile::Forget() noexcept {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
  writing_ = failed_ = inPlace_ = nameless_ = false;
  position_ = length_ = 0;
  target_.clear();
  temporary_.clear();
  pending_.clear();
}

int CFile::GetStatus(const char* path, CFileStatus& status) {
  struct stat found {};
  if (::stat(path, &found) != 0) return 0;
  status.ctime = ToTime(found.st_ctim);
  status.mtime = ToTime(found.st_mtim);
  status.atime = ToTime(found.st_atim);
  status.size = found.st_size;
  status.isDirectory = S_ISDIR(found.st_mode);
  status.fullName = path;
  return 1;
}

void CStdioFile::WriteString(const char* text) { WriteString(std::string_view(text)); }

void CStdioFile::WriteString(std::string_view text) {
  Write(text.data(), text.size());
  if (HasFailed()) throw CFileException("the file cannot be written");
}
