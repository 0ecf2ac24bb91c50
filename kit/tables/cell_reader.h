// Cuts a text into the rows and cells of a table.

#ifndef VEXEL_KIT_TABLES_CELL_READER_H_
#define VEXEL_KIT_TABLES_CELL_READER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kit/request/error.h"
#include "kit/tables/table.h"

namespace vexel {

// Works in the table's own text, where the cells move up to the beginning over the quotes and
// separators between them: a cell never ends behind what has been read. Quotes within a cell that
// does not begin with one are part of it; what follows a closing quote is added.
class CellReader {
 public:
  // The text is UTF-8; reading begins at `start`.
  CellReader(std::string name, Encoding encoding, char separator, std::string text,
             std::size_t start);

  CellReader(const CellReader&) = delete;
  CellReader& operator=(const CellReader&) = delete;

  // Throws an Error of kind failure.
  Table Read(std::vector<std::string> notes) &&;

 private:
  void ReadHeading();
  void ReadRows();
  // False when nothing stands in the row, which then leaves no cells.
  bool ReadRow();
  void ReadCell();
  void TakePlain();
  void TakeQuoted();
  void Keep(std::size_t from, std::size_t end);
  void SkipBlanks();
  std::size_t FindStop() const;
  void EndLine();
  void FitWidth(std::size_t firstCell);
  void NoteUse(std::size_t firstCell);
  void NumberRow();
  void DropUnusedColumns();
  void ReserveByRate();

  bool IsAtEnd() const { return at_ == text_.size(); }
  std::size_t CellStart(std::size_t cell) const { return cell == 0 ? 0 : ends_[cell - 1]; }
  bool IsEmpty(std::size_t cell) const { return CellStart(cell) == ends_[cell]; }
  Error WrongRow(const std::string& text) const;

  Table table_;
  std::string& text_;
  std::vector<std::uint32_t>& ends_;
  std::size_t at_;       // what is to be read
  std::size_t out_ = 0;  // where the next cell goes
  int number_ = 0;       // of the row
  std::size_t width_ = 0;
  std::vector<std::size_t> unused_;  // columns without a heading in which nothing stood so far
  std::array<bool, 256> isStop_{};
};

}  // namespace vexel

#endif  // VEXEL_KIT_TABLES_CELL_READER_H_
