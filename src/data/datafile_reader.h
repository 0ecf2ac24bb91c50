// Reading a map data file.

#ifndef VEXEL_DATA_DATAFILE_READER_H_
#define VEXEL_DATA_DATAFILE_READER_H_

#include <bitset>
#include <span>
#include <string_view>

#include "brindle/specfile.h"
#include "data/dataset.h"
#include "data/teller.h"

namespace vexel {

// All headings and keywords of a data file, as the documents write them.
std::span<const std::string_view> DataFileWords() noexcept;

// Reads heads, loads the map that they name, and hands tables to a TableReader. What stops a load
// is told; what was done before it stays done.
class DataFileReader {
 public:
  DataFileReader(CVELAData& data, CSpecFile& file, int loadMap, int quiet) noexcept
      : data_(data),
        file_(file),
        loadMap_(loadMap),
        quiet_(quiet),
        tell_(data.error, file, quiet) {}

  // A whole file, by its path.
  bool ReadFile(const CString& path);

  // From behind the heading of the file.
  bool ReadHead();

 private:
  bool ReadSections();
  bool ReadKeyword(std::string_view keyword, std::string_view value);
  bool IsReadyForRows();
  bool SetAreaLevels(std::string_view value);
  bool SetVariables(std::string_view value);
  int CountOf(std::string_view keyword, std::string_view value) const;
  void SetVersion(std::string_view value);
  void SetThousandWord(std::string_view value);
  void SetDecimalWord(std::string_view value);
  bool LoadMap(std::string_view value);
  void UnifyMapLabel();
  void RemarkOnWord(std::string_view line) const;
  void RemarkOnRepetition(std::string_view keyword);

  CVELAData& data_;
  CSpecFile& file_;
  int loadMap_;
  int quiet_;
  DataTeller tell_;
  std::bitset<32> seen_;   // keywords of the head, by their places in the list of words
  int statedColumns_ = 0;  // by the heads of the file, in all
  int loadedMaps_ = 0;     // by them, too
  int tables_ = 0;
};

}  // namespace vexel

#endif  // VEXEL_DATA_DATAFILE_READER_H_
