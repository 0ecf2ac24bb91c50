// Files: reading in bulk, and writing that never leaves a torn file behind.

#ifndef VEXEL_PLATFORM_FILE_H_
#define VEXEL_PLATFORM_FILE_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"
#include "platform/object.h"
#include "platform/string.h"

// What the file system says of a file. A fresh record has zero times.
struct CFileStatus {
  using Time = std::chrono::sys_time<std::chrono::nanoseconds>;

  Time ctime{};  // last change of the file's entry
  Time mtime{};  // last change of its contents
  Time atime{};  // last reading
  std::int64_t size = 0;
  bool isDirectory = false;
  CString fullName;
};

// A binary file.
//
// A file opened for reading must be a regular one: a pipe or a device might keep its reader
// waiting, or never end.
//
// A file opened with modeCreate is written beside its target and takes the target's place when it
// is closed and every byte has been taken. Until then, and after any failure, an earlier file of
// that name stands as it was. Where the system has files without a name it is one of those, so that
// a program that is killed leaves nothing behind; it then has a name only from the last byte to
// its place, for the two calls that this takes. A target that is no regular file (a terminal, a
// pipe) is written directly. So is a writable one beside which no file can be made, with a remark
// to the host: what is written is held in memory then until Flush or Close, and a disk that fills
// up tears the file. Reading and writing fail silently and once for all: HasFailed and Close tell.
class VEXEL_API CFile : public CObject {
 public:
  enum OpenFlags : unsigned {
    modeRead = 0,
    modeWrite = 1,
    shareExclusive = 0x10,
    modeCreate = 0x1000,
    typeBinary = 0x8000
  };

  CFile() = default;
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;

  // Closes as Close does, unless an exception thrown since Open is passing: then it discards.
  ~CFile() override;

  // Nonzero on success. A directory is refused, and for reading whatever is no regular file.
  // modeWrite goes with modeCreate.
  virtual int Open(const char* path, unsigned flags);
  bool IsOpen() const noexcept { return descriptor_ >= 0; }

  // Reads up to `count` bytes; fewer only at the end of the file or at an error.
  std::size_t Read(void* buffer, std::size_t count);

  void Write(const void* bytes, std::size_t count);

  // True once the file could not be read on or did not take what was written.
  bool HasFailed() const noexcept { return failed_; }

  // Why the file could not be opened, read on or written, in the system's words where they are its
  // reasons; empty while nothing has failed. Stays until the next Open.
  std::string GetReason() const;

  // Bytes read or written so far, and in all.
  std::int64_t GetPosition() const noexcept { return position_; }
  std::int64_t GetLength() const noexcept { return length_; }

  // Nonzero when everything written stands under the file's name (always so after reading).
  virtual int Close();

  // Closes and discards what was written.
  void Abort() noexcept;

  // Nonzero when there is such a file; the record is filled only then.
  static int GetStatus(const char* path, CFileStatus& status);

  // Hands what is buffered to the system, so that HasFailed tells of all that was written.
  void Flush();

 protected:
  void SetFailed() noexcept { failed_ = true; }
  bool IsWriting() const noexcept { return writing_; }

 private:
  bool OpenForReading(const char* path);
  bool OpenForWriting(const char* path);
  bool OpenTemporary();
  bool OpenNameless();
  void NumberTemporary(int number);
  bool NameTemporary();
  bool MoveIntoPlace();
  void WriteOut(const char* bytes, std::size_t count);
  void Forget() noexcept;
  bool OpenInPlace();
  bool Refuse(int reason) noexcept;

  int descriptor_ = -1;
  bool writing_ = false;
  bool failed_ = false;
  int reason_ = 0;  // the system's number for the first failure, or one of ours
  int exceptionsAtOpen_ = 0;
  std::int64_t position_ = 0;
  std::int64_t length_ = 0;
  std::string target_;
  std::string temporary_;  // empty when the target is written directly
  bool nameless_ = false;  // the temporary file has not taken its name yet
  bool inPlace_ = false;   // the target is a regular file
  std::vector<char> pending_;
};

// A text file. Lines are the caller's: nothing is added or translated.
class VEXEL_API CStdioFile : public CFile {
 public:
  // Throws CFileException when the file does not take the text.
  void WriteString(const char* text);
  void WriteString(std::string_view text);
};

#endif  // VEXEL_PLATFORM_FILE_H_
