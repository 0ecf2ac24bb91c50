#include "platform/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/exceptions.h"
#include "platform/host.h"

namespace {

constexpr std::size_t kWriteBuffer = std::size_t{256} * 1024;

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
  return reason_ == 0 ? "" : std::error_code(reason_, std::generic_category()).message();
}

bool CFile::OpenForReading(const char* path) {
  descriptor_ = ::open(path, O_RDONLY | O_CLOEXEC);
  struct stat status {};
  if (descriptor_ < 0 || ::fstat(descriptor_, &status) != 0) return Refuse(errno);
  if (S_ISDIR(status.st_mode)) return Refuse(EISDIR);
  length_ = S_ISREG(status.st_mode) ? status.st_size : 0;
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
  constexpr int kTries = 100;
  for (int number = 0; number < kTries && descriptor_ < 0; ++number) {
    temporary_ = target_ + ".tmp" + std::to_string(::getpid()) + '-' + std::to_string(number);
    descriptor_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor_ < 0 && errno != EEXIST) break;
  }
  if (descriptor_ >= 0) return true;
  temporary_.clear();
  return Refuse(errno);
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
  if (::close(std::exchange(descriptor_, -1)) != 0) return Refuse(errno);
  if (temporary_.empty()) return true;
  if (::rename(temporary_.c_str(), target_.c_str()) != 0) return Refuse(errno);
  temporary_.clear();
  return true;
}

void CFile::Abort() noexcept {
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
  Forget();
}

void CFile::Forget() noexcept {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
  writing_ = failed_ = inPlace_ = false;
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
