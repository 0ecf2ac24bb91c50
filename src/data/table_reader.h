// Reading the table of a map data file.

#ifndef VEXEL_DATA_TABLE_READER_H_
#define VEXEL_DATA_TABLE_READER_H_

#include <array>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "data/areadata.h"
#include "data/areaindex.h"
#include "data/dataset.h"
#include "data/teller.h"
#include "map/map.h"

namespace vexel {

// Reads the row of column headings and the rows behind it, to the end of the file. Cells are parted
// by tabs, of which several in a row count as one. One row buffer serves all rows; its last value,
// the calculated one, stays 0.
class TableReader {
 public:
  TableReader(CVELAData& data, CSpecFile& file, int quiet);

  // False when the load stops, after a message; but without one where the file ends at once.
  bool Read();

 private:
  bool ReadHeadings();
  bool ReadRow(std::string_view line);
  bool ReadKey(std::string_view& rest);
  bool ReadName(std::string_view& rest);
  bool ReadValues(std::string_view& rest);
  std::int32_t ReadCode(std::string_view cell, int level);
  double ReadValue(std::string_view cell, int column);
  bool ConfirmsUnknownArea(std::string_view name);
  bool Refuse(Message number);

  std::int32_t CodeOf(std::string_view cell) const;
  int CountCells() const { return data_.numDataLevels + 1 + data_.numVars; }
  std::string_view ColumnName(int cell) const;
  void RemarkOnColumn(RemarkInfo remark, int cell, const CAreaStruct* key) const;
  void RemarkOnGaps(std::string_view line, bool isRow) const;
  void RemarkOnBlanks(std::string_view cell, int number) const;
  void RemarkOnDecimals(std::string_view cell, int column, int decimals) const;
  void RemarkOnSecondRow(int& lineOfFirst) const;

  CVELAData& data_;
  CVELAMap& map_;
  CSpecFile& file_;
  DataTeller tell_;
  AreaIndex<CMapOb> nodes_;
  std::vector<int> lineOfRow_;  // of the first row of each node, 0 while it has none
  std::map<std::array<std::int32_t, CAreaStruct::kNumCodes>, int> lineOfUnknown_;
  CAreaData row_;
};

}  // namespace vexel

#endif  // VEXEL_DATA_TABLE_READER_H_
