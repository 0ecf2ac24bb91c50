// Tables of statistics as people have them: cells with commas, semicolons, tabs or bars between, in
// the encodings and with the quotes and line ends that occur. What is no table is refused; what had
// to be guessed is told.

#ifndef VEXEL_KIT_TABLES_TABLE_H_
#define VEXEL_KIT_TABLES_TABLE_H_

#include <vexel/platform/export.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kit/tables/encoding.h"

namespace vexel {

// What a user decides; the rest is found.
struct TableOptions {
  std::optional<Encoding> encoding;
  std::optional<char> separator;
};

// A heading and at least one row under it, all in UTF-8. Rows and columns count from 0. Rows in
// which nothing stands are left out, as are columns in which nothing stands, not even a heading.
// Blanks around a cell are gone unless they were in quotes. A cell is a view into the table, which
// must outlive it and not be moved meanwhile.
class VEXEL_API Table {
 public:
  // As it was given; what is said about the table begins with it.
  const std::string& Name() const noexcept { return name_; }
  Encoding TextEncoding() const noexcept { return encoding_; }
  char Separator() const noexcept { return separator_; }

  // What was guessed about the file, each in one sentence that names the option that decides it.
  const std::vector<std::string>& Notes() const noexcept { return notes_; }

  int ColumnCount() const noexcept { return static_cast<int>(columns_.size()); }
  int RowCount() const noexcept { return static_cast<int>(rows_.size()) - 1; }

  // Blanks for line breaks; "column 5" for a column of values without a heading. Several may have
  // the same.
  const std::string& Heading(int column) const { return columns_[ToSize(column)].heading; }

  // The number that a spreadsheet shows: 1 for the first row of the file, blank rows included.
  int RowNumber(int row) const;

  // Empty where nothing stands, also where the row ends before the column.
  std::string_view Cell(int row, int column) const;

  // The column of that heading, first in the same letter case and then in any; "name#2" is the
  // second of several. None, or one of several that are not told apart, throws an Error of kind
  // request.
  int FindColumn(std::string_view heading) const;

 private:
  friend class CellReader;

  struct Column {
    std::string heading;
    std::uint32_t cell;  // of a row
  };
  // From this row on the file's numbers run that far ahead.
  struct Shift {
    int row;
    int ahead;
  };

  static std::size_t ToSize(int number) { return static_cast<std::size_t>(number); }

  std::string name_;
  Encoding encoding_ = Encoding::utf8;
  char separator_ = ',';
  std::vector<std::string> notes_;
  std::vector<Column> columns_;
  std::string text_;                    // the cells, one behind the other
  std::vector<std::uint32_t> ends_;     // where each of them ends
  std::vector<std::uint32_t> rows_{0};  // the first cell of each row, and of the one after the last
  std::vector<Shift> shifts_;
};

// Reads a regular file of up to 1 GB. Everything that is wrong throws an Error of kind failure with
// the file's name, the row, and what to do.
VEXEL_API Table ReadTable(const std::string& path, const TableOptions& options = {});

// The same for the bytes of a file, which is called `name` in what is said.
VEXEL_API Table ParseTable(std::string bytes, const std::string& name,
                           const TableOptions& options = {});

}  // namespace vexel

#endif  // VEXEL_KIT_TABLES_TABLE_H_
