#include "brindle/specfile.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace {

constexpr std::size_t kBlock = std::size_t{128} * 1024;

// A line beyond this is none that any map or table holds; it ends the file.
constexpr std::size_t kLongestLine = std::size_t{64} * 1024 * 1024;

constexpr bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
constexpr bool IsWordCharacter(char c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '_'; }
constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }

bool IsBlankLine(std::string_view text) {
  return text.empty() || (IsBlank(text.front()) && std::all_of(text.begin(), text.end(), IsBlank));
}

// Blanks at the ends mean nothing, except in the row of a table, which a tab inside makes. Fills in
// place: a copy of what was just written costs more than all the rest of a short line.
void Split(std::string_view text, CSpecFile::Line& line) {
  line.argument = {};
  if (IsBlank(text.front()) || IsBlank(text.back())) {
    const std::string_view trimmed = vexel::TrimBlanks(text);
    if (trimmed.find('\t') == std::string_view::npos) text = trimmed;
  }
  line.command = text;
  if (!IsLetter(text.front())) return;
  const auto* wordEnd = std::find_if_not(text.begin(), text.end(), IsWordCharacter);
  const auto* equals = std::find_if_not(wordEnd, text.end(), [](char c) { return c == ' '; });
  if (equals == text.end() || *equals != '=') return;
  if (text.find('\t') != std::string_view::npos) return;
  line.command = {text.begin(), wordEnd};
  line.argument = vexel::TrimBlanks({equals + 1, text.end()});
}

}  // namespace

CSpecFile::~CSpecFile() = default;

int CSpecFile::Open(const char* path, unsigned mode) {
  path_ = path;
  lineNumber = 0;
  state = 0;
  ungot_ = atEnd_ = false;
  current_ = {};
  consumed_ = 0;
  next_ = filled_ = nextLf_ = nextCr_ = 0;
  if (mode != 0) return CStdioFile::Open(path, modeCreate | modeWrite);
  if (CStdioFile::Open(path, modeRead) == 0) return 0;
  if (buffer_ == nullptr) {
    size_ = kBlock;
    buffer_ = std::make_unique_for_overwrite<char[]>(size_);
  }
  SkipByteOrderMark();
  return 1;
}

void CSpecFile::SkipByteOrderMark() {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  Refill();
  if (std::string_view(buffer_.get(), filled_).starts_with(kMark)) Consume(kMark.size());
}

int CSpecFile::Close() {
  buffer_.reset();
  current_ = {};
  ungot_ = false;
  return CStdioFile::Close();
}

// Moves what is not delivered to the front of the buffer and reads on behind it. False when the
// file has no more.
bool CSpecFile::Refill() {
  if (atEnd_) return false;
  const std::size_t kept = filled_ - next_;
  if (kept >= kLongestLine) {
    SetFailed();
    atEnd_ = true;
    next_ = filled_;
    return false;
  }
  if (kept == size_) {
    auto larger = std::make_unique_for_overwrite<char[]>(2 * size_);
    std::memcpy(larger.get(), buffer_.get() + next_, kept);
    buffer_ = std::move(larger);
    size_ *= 2;
  } else {
    std::memmove(buffer_.get(), buffer_.get() + next_, kept);
  }
  next_ = 0;
  filled_ = kept + Read(buffer_.get() + kept, size_ - kept);
  // What is kept holds no line end, but for a carriage return as its last byte.
  const std::size_t unseen = kept == 0 ? 0 : kept - 1;
  nextLf_ = FindByte('\n', unseen);
  nextCr_ = FindByte('\r', unseen);
  atEnd_ = filled_ < size_;
  return filled_ > kept;
}

std::size_t CSpecFile::FindByte(char byte, std::size_t from) const {
  const void* found = std::memchr(buffer_.get() + from, byte, filled_ - from);
  return found == nullptr
             ? filled_
             : static_cast<std::size_t>(static_cast<const char*>(found) - buffer_.get());
}

std::size_t CSpecFile::FindLineEnd() {
  if (nextLf_ < next_) nextLf_ = FindByte('\n', next_);
  if (nextCr_ < next_) nextCr_ = FindByte('\r', next_);
  return std::min(nextLf_, nextCr_);
}

void CSpecFile::Consume(std::size_t end) {
  consumed_ += static_cast<std::int64_t>(end - next_);
  next_ = end;
}

// Takes the bytes up to the next line end, which is taken too. False at the end of the file.
bool CSpecFile::TakeRawLine(std::string_view& text) {
  std::size_t end = FindLineEnd();
  // A carriage return as the last byte read may have its line feed still to come.
  while (end >= filled_ || (end + 1 == filled_ && buffer_[end] == '\r')) {
    const bool more = Refill();
    end = FindLineEnd();  // what was there already has moved
    if (!more) break;
  }
  // What stands before a failure without a line end may be half a line.
  if (end >= filled_ && HasFailed()) next_ = filled_;
  if (next_ == filled_) return false;
  end = std::min(end, filled_);
  text = {buffer_.get() + next_, end - next_};
  const std::string_view rest(buffer_.get() + end, filled_ - end);
  Consume(end + (rest.empty() ? 0 : rest.starts_with("\r\n") ? 2 : 1));
  return true;
}

bool CSpecFile::NextLine(Line& line) {
  while (!ungot_) {
    if (buffer_ == nullptr || !TakeRawLine(current_)) {
      state = 2;
      current_ = {};
      line = {};
      return false;
    }
    ++lineNumber;
    if (!IsBlankLine(current_)) break;
  }
  ungot_ = false;
  Split(current_, line);
  return true;
}

bool CSpecFile::NextPoint(double& x, double& y) {
  if (ungot_ || buffer_ == nullptr) return false;
  std::string_view rest(buffer_.get() + next_, filled_ - next_);
  if (!vexel::TakePlainDecimal(rest, x) || !rest.starts_with(' ')) return false;
  rest.remove_prefix(1);
  if (!vexel::TakePlainDecimal(rest, y) || !rest.starts_with('\n')) return false;
  Consume(filled_ - rest.size() + 1);
  ++lineNumber;
  return true;
}

unsigned CSpecFile::GetLine(CVELAString& command, CVELAString& argument, bool /*unused*/) {
  Line line;
  NextLine(line);
  command.Assign(line.command);
  argument.Assign(line.argument);
  return state;
}

void CSpecFile::SkipSection() {
  ungot_ = false;
  Line line;
  while (NextLine(line)) {
    if (line.IsHeading()) {
      UngetLine();
      return;
    }
  }
  state = 0;  // the end of the file is still to be delivered
}

void CSpecFile::PutText(std::string_view line) {
  Write(line.data(), line.size());
  Write("\n", 1);
}

void CSpecFile::PutLine(const CVELAString& line) { PutText(line.View()); }

void CSpecFile::PutLine(const CVELAString& keyword, const CVELAString& value) {
  // A tab or a line end in the value would keep the line from being read as what it is.
  std::string line(keyword.View());
  line.append("=").append(value.View());
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
  PutText(line);
}

void CSpecFile::PutLine(const CVELAString& keyword, int value) {
  PutLine(keyword, CVELAString(std::to_string(value)));
}
