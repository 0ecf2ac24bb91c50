#include "kit/tables/cell_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "kit/request/hints.h"
#include "kit/tables/blanks.h"

namespace vexel {

namespace {

// As many as the widest of common spreadsheets has.
constexpr std::size_t kMostColumns = 16384;

constexpr std::size_t kRowsForRate = 1000;

std::string SeparatorText(char separator) {
  return separator == '\t' ? "a tab" : "a " + Quoted({&separator, 1});
}

// The heading in one line.
std::string HeadingText(std::string_view cell) {
  std::string text(cell);
  for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) text.erase(at, 1);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return std::string(TrimAllBlanks(text));
}

}  // namespace

CellReader::CellReader(std::string name, Encoding encoding, char separator, std::string text,
                       std::size_t start)
    : text_(table_.text_), ends_(table_.ends_), at_(start) {
  table_.name_ = std::move(name);
  table_.encoding_ = encoding;
  table_.separator_ = separator;
  text_ = std::move(text);
  for (const char stop : {separator, '\r', '\n'}) isStop_[static_cast<unsigned char>(stop)] = true;
}

Table CellReader::Read(std::vector<std::string> notes) && {
  ReadHeading();
  ReadRows();
  DropUnusedColumns();
  text_.resize(out_);
  table_.notes_ = std::move(notes);
  return std::move(table_);
}

void CellReader::ReadHeading() {
  while (!IsAtEnd() && !ReadRow()) continue;
  width_ = ends_.size();
  if (width_ == 0) throw Failed(table_.name_, "nothing but blanks stands in it");
  if (width_ > kMostColumns) {
    throw WrongRow("has " + std::to_string(width_) + " cells; a table has up to " +
                   std::to_string(kMostColumns) + " columns");
  }
  for (std::size_t cell = 0; cell < width_; ++cell) {
    const std::size_t start = CellStart(cell);
    std::string heading = HeadingText(std::string_view(text_).substr(start, ends_[cell] - start));
    if (heading.empty()) {
      unused_.push_back(cell);
      heading = "column " + std::to_string(cell + 1);
    }
    table_.columns_.push_back({std::move(heading), static_cast<std::uint32_t>(cell)});
  }
  ends_.clear();
  out_ = 0;
}

void CellReader::ReadRows() {
  auto& rows = table_.rows_;
  while (!IsAtEnd()) {
    const std::size_t firstCell = ends_.size();
    if (!ReadRow()) continue;
    FitWidth(firstCell);
    NoteUse(firstCell);
    NumberRow();
    rows.push_back(static_cast<std::uint32_t>(ends_.size()));
    if (rows.size() == kRowsForRate) ReserveByRate();
  }
  if (rows.size() == 1) throw Failed(table_.name_, "has a heading, but no rows under it");
}

bool CellReader::ReadRow() {
  const std::size_t firstCell = ends_.size();
  const std::size_t start = out_;
  ++number_;
  ReadCell();
  while (!IsAtEnd() && text_[at_] == table_.separator_) {
    ++at_;
    ReadCell();
  }
  EndLine();
  if (out_ > start) return true;
  ends_.resize(firstCell);
  return false;
}

void CellReader::ReadCell() {
  SkipBlanks();
  if (!IsAtEnd() && text_[at_] == '"') {
    TakeQuoted();
  } else {
    TakePlain();
  }
  ends_.push_back(static_cast<std::uint32_t>(out_));
}

void CellReader::TakePlain() {
  const std::size_t stop = FindStop();
  std::string_view cell(text_.data() + at_, stop - at_);
  while (const std::size_t length = BlankAtEnd(cell)) cell.remove_suffix(length);
  Keep(at_, at_ + cell.size());
  at_ = stop;
}

void CellReader::TakeQuoted() {
  for (bool isOpen = true; isOpen;) {
    const std::size_t from = at_ + 1;
    const std::size_t quote = text_.find('"', from);
    if (quote == std::string::npos) {
      throw WrongRow("begins a cell with a quote that nothing closes; close or remove it");
    }
    const bool isDoubled = quote + 1 < text_.size() && text_[quote + 1] == '"';
    Keep(from, isDoubled ? quote + 1 : quote);
    at_ = quote + 1;
    isOpen = isDoubled;
  }
  const std::string_view rest(text_.data() + at_, FindStop() - at_);
  if (TrimAllBlanks(rest).empty()) {
    at_ += rest.size();
  } else {
    TakePlain();
  }
}

void CellReader::Keep(std::size_t from, std::size_t end) {
  std::memmove(text_.data() + out_, text_.data() + from, end - from);
  out_ += end - from;
}

void CellReader::SkipBlanks() {
  // A separator may be a blank itself.
  while (!IsAtEnd() && !isStop_[static_cast<unsigned char>(text_[at_])]) {
    const std::size_t length = BlankAtStart(std::string_view(text_).substr(at_, 4));
    if (length == 0) return;
    at_ += length;
  }
}

std::size_t CellReader::FindStop() const {
  const auto stop = std::find_if(text_.begin() + static_cast<std::ptrdiff_t>(at_), text_.end(),
                                 [this](char c) { return isStop_[static_cast<unsigned char>(c)]; });
  return static_cast<std::size_t>(stop - text_.begin());
}

void CellReader::EndLine() {
  if (!IsAtEnd() && text_[at_] == '\r') {
    ++at_;
    if (!IsAtEnd() && text_[at_] == '\n') ++at_;
  } else if (!IsAtEnd()) {
    ++at_;
  }
}

// Takes cells off the row's end in which nothing stands, as long as it is wider than the heading.
void CellReader::FitWidth(std::size_t firstCell) {
  const std::size_t cells = ends_.size() - firstCell;
  if (cells <= width_) return;
  for (std::size_t cell = firstCell + width_; cell < ends_.size(); ++cell) {
    if (IsEmpty(cell)) continue;
    throw WrongRow("has " + Counted(cells, "cell") + ", the heading " + std::to_string(width_) +
                   "; put a cell that holds " + SeparatorText(table_.separator_) +
                   " in quotes, and remove what stands above the heading");
  }
  ends_.resize(firstCell + width_);
}

void CellReader::NoteUse(std::size_t firstCell) {
  std::erase_if(unused_, [&](std::size_t column) {
    return firstCell + column < ends_.size() && !IsEmpty(firstCell + column);
  });
}

void CellReader::NumberRow() {
  const int row = static_cast<int>(table_.rows_.size()) - 1;
  const int ahead = number_ - row;
  auto& shifts = table_.shifts_;
  if (shifts.empty() || shifts.back().ahead != ahead) shifts.push_back({row, ahead});
}

void CellReader::DropUnusedColumns() {
  std::erase_if(table_.columns_, [this](const Table::Column& column) {
    return std::binary_search(unused_.begin(), unused_.end(), std::size_t{column.cell});
  });
}

// What grows step by step takes twice its room in between.
void CellReader::ReserveByRate() {
  const double times = 1.1 * static_cast<double>(text_.size()) / static_cast<double>(at_);
  const auto grown = [=](std::size_t size) {
    return static_cast<std::size_t>(times * static_cast<double>(size));
  };
  ends_.reserve(grown(ends_.size()));
  table_.rows_.reserve(grown(table_.rows_.size()));
}

Error CellReader::WrongRow(const std::string& text) const {
  return Failed(table_.name_, "row " + std::to_string(number_) + ' ' + text);
}

}  // namespace vexel
