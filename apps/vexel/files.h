// Files as the command line names them, with "-" for standard input and output.

#ifndef VEXEL_APPS_VEXEL_FILES_H_
#define VEXEL_APPS_VEXEL_FILES_H_

#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "failure.h"

namespace vexel::cli {

inline bool IsStandard(std::string_view name) { return name == "-"; }

// Throws Failure, with the reason, unless the file can be read and holds something.
void CheckReadable(const std::string& path);

// The path without its last part, with the closing separator; empty when there is none.
std::string FolderOf(std::string_view path);

// The path with another extension, which comes with its dot.
std::string WithExtension(std::string_view path, std::string_view extension);

// The relative path by which something in `folder` reaches `path`; both as seen from the working
// folder.
std::string RelativeTo(const std::string& path, const std::string& folder);

// Writes text to a file, which takes its place only when it is whole, or to standard output.
void WriteText(const std::string& name, std::string_view text);

// Calls a writer with the path that it is to write: the named file, or for standard output one in
// between, which is passed on when the writer is done.
void WriteThrough(const std::string& name,
                  const std::function<void(const std::string& path)>& write);

// A folder of our own for files in between, which goes with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  std::string PathOf(std::string_view name) const { return path_ + '/' + std::string(name); }

 private:
  std::string path_;
};

// An output that the library writes to a file of that path; for standard output it is one in
// between, which Deliver hands on.
class LibraryOutput {
 public:
  explicit LibraryOutput(const std::string& name);

  const std::string& Path() const { return path_; }
  void Deliver() const;

 private:
  std::unique_ptr<TemporaryFolder> folder_;
  std::string path_;
};

// Has the library write one output. `write` gets the path, and gives false when it has told the
// user of a failure.
template <typename Write>
void WriteThrough(const std::string& name, Write write);

// Everything that standard input holds, and a whole file.
std::string ReadStandardInput();
std::string ReadFile(const std::string& path);

// Keeps the signals that end a program waiting for as long as it lives, so that outputs are
// written whole, and their temporary files go, before one takes effect.
class SignalHold {
 public:
  SignalHold();
  SignalHold(const SignalHold&) = delete;
  SignalHold& operator=(const SignalHold&) = delete;
  ~SignalHold();

 private:
  sigset_t before_;
};

template <typename Write>
void WriteThrough(const std::string& name, Write write) {
  const SignalHold hold;
  const LibraryOutput output(name);
  if (!write(output.Path())) throw Failure();
  output.Deliver();
}

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_FILES_H_
