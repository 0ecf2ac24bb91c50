// Files as the command line names them, with "-" for standard input and output.

#ifndef VEXEL_KIT_FILES_FILES_H_
#define VEXEL_KIT_FILES_FILES_H_

#include <vexel/platform/export.h>

#include <csignal>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

namespace vexel {

inline bool IsStandard(std::string_view name) { return name == "-"; }

// Throws an Error, with the reason, unless it is a regular file that can be read and holds
// something.
VEXEL_API void CheckReadable(const std::string& path);

// The path without its last part, with the closing separator; empty when there is none.
VEXEL_API std::string FolderOf(std::string_view path);

// The path with another extension, which comes with its dot.
VEXEL_API std::string WithExtension(std::string_view path, std::string_view extension);

// The relative path by which something in `folder` reaches `path`; both as seen from the working
// folder.
VEXEL_API std::string RelativeTo(const std::string& path, const std::string& folder);

// Writes text to a file, which takes its place only when it is whole, or to standard output.
VEXEL_API void WriteText(const std::string& name, std::string_view text);

// A folder of our own for one file in between. Both go at the end, which takes no memory. A process
// that is killed leaves the folder behind: with nothing in it while the file is being written,
// where the system has files without a name.
class VEXEL_API TemporaryFolder {
 public:
  explicit TemporaryFolder(std::string_view fileName);
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::string& FilePath() const { return file_; }

 private:
  std::string path_;
  std::string file_;
};

// An output that the library writes to a file of that path; for standard output it is one in
// between. Once that is written, Collect takes it up and removes it, and Deliver hands it on and
// needs no memory.
class VEXEL_API LibraryOutput {
 public:
  explicit LibraryOutput(const std::string& name);

  const std::string& Path() const { return path_; }
  void Collect();
  void Deliver() const;

 private:
  std::unique_ptr<TemporaryFolder> folder_;
  std::string path_;
  bool isStandard_;
  std::string collected_;
};

// What standard input holds, copied to a file that has no name and is gone with the process at the
// latest: whatever ends it leaves nothing behind. More than kMost bytes are refused.
class VEXEL_API StandardInputCopy {
 public:
  static constexpr std::size_t kMost = 1'000'000'000;

  StandardInputCopy();
  StandardInputCopy(const StandardInputCopy&) = delete;
  StandardInputCopy& operator=(const StandardInputCopy&) = delete;
  ~StandardInputCopy();

  // Opens the copy as often as is wanted, from its beginning.
  const std::string& Path() const { return path_; }

 private:
  int descriptor_;
  std::string path_;
};

// A whole file; one with more than `most` bytes is refused.
VEXEL_API std::string ReadFile(const std::string& path,
                               std::size_t most = std::numeric_limits<std::size_t>::max());

// A file of settings, or what standard input holds; one that has no end, or more than a million
// bytes, is refused.
VEXEL_API std::string ReadSettings(const std::string& name);

// Whether two names are those of one file, or would be.
VEXEL_API bool IsSameFile(const std::string& a, const std::string& b);

// Keeps the signals that end a program waiting for as long as it lives, so that outputs are
// written whole, and their temporary files go, before one takes effect.
class VEXEL_API SignalHold {
 public:
  SignalHold();
  SignalHold(const SignalHold&) = delete;
  SignalHold& operator=(const SignalHold&) = delete;
  ~SignalHold();

 private:
  sigset_t before_;
};

// Has the library write one output. `write` gets the path, and throws when that fails.
template <typename Write>
void WriteThrough(const std::string& name, Write write) {
  const SignalHold hold;
  LibraryOutput output(name);
  write(output.Path());
  output.Collect();
  output.Deliver();
}

}  // namespace vexel

#endif  // VEXEL_KIT_FILES_FILES_H_
