// A table of statistics for the areas of a map.

#ifndef VEXEL_DATA_DATASET_H_
#define VEXEL_DATA_DATASET_H_

#include <string>
#include <string_view>
#include <utility>

#include "brindle/areastruct.h"
#include "brindle/text.h"
#include "data/areadata.h"
#include "platform/array.h"
#include "platform/export.h"
#include "platform/object.h"

class CMapOb;
class CSpecFile;
class CVELAMap;

namespace vexel {
class DataFileReader;
class TableReader;
}  // namespace vexel

// One row for each area and one column for each variable; behind the columns of the variables one
// more, number `numVars`, for a value derived from two of them. The host writes `map` before the
// first load; the set does not own it. Nodes of the map point at rows of the set, so a host sets
// those pointers (CMapOb::SetAreaDataPointers) after the last row is in.
//
// Indexes outside a list throw CInvalidArgException.
class VEXEL_API CVELAData : public CObject {
 public:
  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  CVELAData() = default;
  CVELAData(const CVELAData&) = delete;

  // Takes over table, settings and selection of another set, row by row; folder, error and version
  // stay. The names and decimals of the target must be at least as many as the source's. Assigning
  // a set to itself does nothing.
  void operator=(CVELAData& source);  // NOLINT: gives nothing, by custom

  // Loads a data file: its head, the map it names when `loadMap` is nonzero, and its rows, whose
  // names and level names go into the map. The set is not emptied first.
  //
  // 1 on success. 0 otherwise: the user has been told, or with `quiet` nonzero `error` holds the
  // text; what was done before the failure stays done.
  int Build(const CString& path, int loadMap, int quiet);

  // The same from the line behind the "[MapDataFile]" heading on, and from the "[Data]" heading on.
  int Build(CSpecFile& file, int loadMap, int quiet);
  int BuildData(CSpecFile& file, int quiet);

  // Fills the calculated column of every row from the two selected ones, and sets its decimals. A
  // Ratio updates the legend of the linked map. (This and the next stand in
  // legend/derived_column.cpp.)
  void PerformCalc();

  // Decimals that show the values of the linked map's legend with about three digits that count.
  int CalcNumDecimals();

  // The column on show: the first selected variable, or the calculated column when a second
  // variable is selected.
  int GetSelected() const { return var2Selected == -1 ? var1Selected : numVars; }

  int GetNumAreas() const { return areas.GetSize(); }
  CAreaData& GetAreaData(int index) { return areas[index]; }
  const CAreaData& GetAreaData(int index) const { return areas[index]; }

  // The first row with that key, null when there is none. Looks at row after row.
  CAreaData* FindAreaData(const CAreaStruct& key);

  // Appends a copy of the row with all its values and returns its index.
  int AddAreaData(const CAreaData& row);

  CVELAString GetVarName(int column) const { return varNames[column]; }
  void SetVarName(int column, const CVELAString& text) { varNames[column] = text; }
  int GetVarDecs(int column) const { return varDecs[column]; }
  void SetVarDecs(int column, int decimals) { varDecs[column] = decimals; }

  const CVELAString& GetMapFile() const { return mapFile; }
  void SetMapFile(CVELAString text) { mapFile = std::move(text); }
  const CVELAString& GetMapLabel() const { return mapLabel; }
  void SetMapLabel(CVELAString text) { mapLabel = std::move(text); }
  const CVELAString& GetLinkToFile() const { return linkToFile; }
  void SetLinkToFile(CVELAString text) { linkToFile = std::move(text); }
  const CVELAString& GetNoValue() const { return noValue; }
  void SetNoValue(CVELAString text) { noValue = std::move(text); }
  const CVELAString& GetError() const { return error; }
  void SetError(CVELAString text) { error = std::move(text); }
  char GetThousand() const { return thousand; }
  void SetThousand(char separator) { thousand = separator; }
  char GetDecimal() const { return decimal; }
  void SetDecimal(char separator) { decimal = separator; }
  int GetNumVars() const { return numVars; }
  void SetNumVars(int count) { numVars = count; }  // resizes nothing
  int GetNumDataLevels() const { return numDataLevels; }
  void SetNumDataLevels(int count) { numDataLevels = count; }
  int GetVar1Selected() const { return var1Selected; }
  void SetVar1Selected(int column) { var1Selected = column; }
  int GetVar2Selected() const { return var2Selected; }
  void SetVar2Selected(int column) { var2Selected = column; }  // -1 for none
  int GetCalcSelected() const { return calcSelected; }
  void SetCalcSelected(int calculation) { calcSelected = calculation; }  // 0 to 3, -1 for none

  CVELAMap* map = nullptr;

 protected:
  CVELAString dataFolder;
  CVELAString mapFile;
  CVELAString linkToFile;
  int mapIsText = 0;
  int numVars = 0;
  vexel::GrowArray<CVELAString> varNames;
  vexel::GrowArray<int> varDecs;
  CVELAString mapLabel;
  CVELAString noValue;
  char thousand = ',';
  char decimal = '.';
  CVELAString error;
  int numDataLevels = 0;
  vexel::GrowArray<CAreaData> areas;
  int var1Selected = 0;
  int var2Selected = -1;
  int calcSelected = -1;
  unsigned char oldVersion = 0;

 private:
  friend class CVELAMap;  // writes the data file
  friend class vexel::DataFileReader;
  friend class vexel::TableReader;

  CVELAMap& LinkedMap() const;  // throws CInvalidArgException when the host has linked none
  void WriteTo(CSpecFile& file, CVELAMap& tree, std::string_view mapBase) const;
  void WriteHeader(CSpecFile& file, const CVELAMap& tree) const;
  void AppendKeyAndName(std::string& line, const CAreaData& row, const CMapOb* node) const;
  std::string MissingText() const;
};

#endif  // VEXEL_DATA_DATASET_H_
