// The section and keyword text file in which maps and data files are held.

#ifndef VEXEL_BRINDLE_SPECFILE_H_
#define VEXEL_BRINDLE_SPECFILE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "brindle/progress.h"
#include "brindle/text.h"
#include "platform/export.h"
#include "platform/file.h"

// A text file of headings ("[Map]"), keyword lines ("Name=Value") and lines that are neither.
//
// Lines end in LF, CR LF or CR on reading and in LF on writing; a byte order mark at the start is
// skipped; a line of blanks and tabs only is never delivered, but counted. A keyword line is a
// letter, then letters, digits or "_", optional blanks, and "="; blanks at both ends of its value
// are dropped. A line that starts with "[", a digit, a sign or a dot is never one. Blanks and tabs
// at both ends of a line mean nothing and are dropped; a tab inside makes the line a row of a
// table, which comes whole with all its blanks. There are no comments.
//
// The file is read in blocks; a line costs no allocation. What cannot be read on, or a line beyond
// 64 MiB, ends the file and shows in HasFailed. Writing goes beside the target and takes
// its place on Close, or on destruction without an exception.
class VEXEL_API CSpecFile : public CStdioFile {
 public:
  // What a line holds. The texts stay good until the next line is taken.
  struct Line {
    std::string_view command;   // the keyword, or the whole line
    std::string_view argument;  // the value of a keyword line
    bool IsHeading() const noexcept { return command.starts_with('['); }
  };

  explicit CSpecFile(int) {}
  ~CSpecFile() override;

  // Mode 0 reads, 1 writes. Nonzero on success.
  int Open(const char* path, unsigned mode) override;

  // Delivers the next line and returns the state. At the end of the file both texts come empty and
  // the state is 2.
  unsigned GetLine(CVELAString& command, CVELAString& argument, bool);

  // The same without a copy: false, with the state 2, at the end of the file.
  bool NextLine(Line& line);

  // Takes the next line if it is nothing but two plain decimals with a blank between, as most lines
  // of a map are; else false, and the line is still to come. It cannot be given back.
  bool NextPoint(double& x, double& y);

  // The next line taken is the last one again.
  void UngetLine() noexcept { ungot_ = !current_.empty(); }

  // Passes over lines; the next one taken is the next heading, or there is none.
  void SkipSection();

  // A line, or a keyword and its value. Tabs and line ends in a value become blanks, so that the
  // line is read again as a keyword line; blanks at its ends are lost then.
  void PutLine(const CVELAString& line);
  void PutLine(const CVELAString& keyword, const CVELAString& value);
  void PutLine(const CVELAString& keyword, int value);

  // The same for callers that build their lines in a buffer of their own.
  void PutText(std::string_view line);

  // Bytes of the file up to the end of the line last taken or put.
  std::int64_t GetPosition() const noexcept {
    return IsWriting() ? CStdioFile::GetPosition() : consumed_;
  }

  int Close() override;

  // The path by which the file was opened last, as it was given.
  const std::string& GetPath() const noexcept { return path_; }

  int lineNumber = 0;  // of the line last delivered
  unsigned state = 0;  // 0 while lines are delivered, 2 at the end of the file

 private:
  bool TakeRawLine(std::string_view& text);
  bool Refill();
  std::size_t FindByte(char byte, std::size_t from) const;
  std::size_t FindLineEnd();
  void Consume(std::size_t end);
  void SkipByteOrderMark();

  std::string path_;
  bool ungot_ = false;
  bool atEnd_ = false;        // nothing is left in the file behind the buffer
  std::string_view current_;  // the line last delivered
  std::int64_t consumed_ = 0;

  std::unique_ptr<char[]> buffer_;
  std::size_t size_ = 0;
  std::size_t next_ = 0;    // first byte not yet delivered
  std::size_t filled_ = 0;  // end of the bytes read
  // The next line feed and carriage return at or behind next_, or filled_: kept, so that a file
  // with one kind of line end is not searched for the other again and again.
  std::size_t nextLf_ = 0;
  std::size_t nextCr_ = 0;
};

#endif  // VEXEL_BRINDLE_SPECFILE_H_
