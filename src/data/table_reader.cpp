#include "data/table_reader.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "data/nodeindex.h"
#include "messages/remarks.h"
#include "platform/number.h"

namespace vexel {

namespace {

constexpr char kTab = '\t';
constexpr std::string_view kTabs = "\t";
constexpr std::string_view kKeepName = "~";  // leave what the map says
constexpr std::string_view kNameColumn = "Area Name";
constexpr int kManyDecimals = 6;

// Characters behind the last separator, 0 without one.
int CountDecimals(std::string_view cell, char separator) {
  const std::size_t at = cell.rfind(separator);
  return at == std::string_view::npos ? 0 : static_cast<int>(cell.size() - at - 1);
}

// Whether a line has a tab without a cell before it. Every row is asked, so by eight bytes at once,
// of which each eight begin with the last of those before.
bool HasGaps(std::string_view line) {
  constexpr std::uint64_t kTabsOnly = 0x0909090909090909U;
  constexpr std::uint64_t kLowBits = 0x7F7F7F7F7F7F7F7FU;
  if (line.starts_with(kTab)) return true;
  std::size_t at = 0;
  for (; at + sizeof(std::uint64_t) <= line.size(); at += sizeof(std::uint64_t) - 1) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, line.data() + at, sizeof(bytes));
    bytes ^= kTabsOnly;
    // The top bit of each byte that is a tab.
    const std::uint64_t tabs = ~(((bytes & kLowBits) + kLowBits) | bytes | kLowBits);
    if ((tabs & (tabs >> 8U)) != 0) return true;
  }
  return line.substr(at).find("\t\t") != std::string_view::npos;
}

// Most codes are a few digits.
bool TakeDigits(std::string_view cell, std::int32_t& code) {
  constexpr std::size_t kMostDigits = 9;
  if (cell.size() > kMostDigits) return false;
  code = 0;
  for (const char c : cell) {
    if (c < '0' || c > '9') return false;
    code = 10 * code + (c - '0');
  }
  return true;
}

bool HasBlanksAround(std::string_view cell) { return cell.front() == ' ' || cell.back() == ' '; }

}  // namespace

TableReader::TableReader(CVELAData& data, CSpecFile& file, int quiet)
    : data_(data),
      map_(data.LinkedMap()),
      file_(file),
      tell_(data.error, file, quiet),
      nodes_(IndexNodes(map_)),
      lineOfRow_(nodes_.GetCount()) {
  row_.values.SetSize(data.numVars + 1);
}

bool TableReader::Read() {
  if (!ReadHeadings()) return false;
  const int before = data_.GetNumAreas();
  CSpecFile::Line line;
  while (file_.state == 0 && file_.NextLine(line)) {
    if (!ReadRow(line.command)) return false;
  }
  if (data_.GetNumAreas() == before && !file_.HasFailed())
    tell_.RemarkOnFile({.kind = RemarkKind::noRows});
  return true;
}

bool TableReader::ReadHeadings() {
  CSpecFile::Line line;
  if (!file_.NextLine(line)) return false;
  if (HasGaps(line.command)) RemarkOnGaps(line.command, false);
  std::string_view rest = line.command;
  for (int i = 0; i < data_.numDataLevels; ++i) {
    const std::string_view cell = TakeToken(rest, kTabs);
    if (cell.empty()) return Refuse(Message::tooFewLevelNames);
    if (cell == kKeepName) continue;
    map_.levelNames[static_cast<std::size_t>(i) + 1].Assign(cell);
    if (HasBlanksAround(cell)) RemarkOnBlanks(cell, i);
    tell_.RemarkOnName(cell, {});
  }
  TakeToken(rest, kTabs);
  for (int i = 0; i < data_.numVars; ++i) {
    const std::string_view cell = TakeToken(rest, kTabs);
    if (cell.empty()) return Refuse(Message::tooFewVariableNames);
    data_.varNames[i].Assign(cell);
    if (HasBlanksAround(cell)) RemarkOnBlanks(cell, data_.numDataLevels + 1 + i);
    tell_.RemarkOnName(cell, {});
  }
  const std::string_view surplus = TakeToken(rest, kTabs);
  if (!surplus.empty()) tell_.Remark({.kind = RemarkKind::surplusHeading, .found = surplus});
  return true;
}

bool TableReader::ReadRow(std::string_view line) {
  if (HasGaps(line)) RemarkOnGaps(line, true);
  if (!ReadKey(line) || !ReadName(line) || !ReadValues(line)) return false;
  data_.AddAreaData(row_);
  return true;
}

bool TableReader::ReadKey(std::string_view& rest) {
  for (int i = 0; i < data_.numDataLevels; ++i) {
    const std::string_view cell = TakeToken(rest, kTabs);
    if (cell.empty()) return Refuse(Message::areaLevelMissing);
    row_.area.codes[static_cast<std::size_t>(i)] = ReadCode(cell, i);
  }
  return true;
}

std::int32_t TableReader::CodeOf(std::string_view cell) const {
  const bool isOld = data_.oldVersion != 0;
  if (!isOld && EqualNoCase(cell, "X")) return CAreaStruct::kUnset;
  const std::int64_t number = ToWholeNumber(cell);
  return isOld && number == 0 ? CAreaStruct::kUnset : LowInt32(number);
}

std::int32_t TableReader::ReadCode(std::string_view cell, int level) {
  std::int32_t code = 0;
  if (TakeDigits(cell, code) && (code != 0 || data_.oldVersion == 0)) return code;
  code = CodeOf(cell);
  if (HasBlanksAround(cell)) RemarkOnBlanks(cell, level);
  const NumberFit fit = FitOfInt32(cell);
  if (fit != NumberFit::whole && !EqualNoCase(cell, "X")) {
    const std::string taken = code == CAreaStruct::kUnset ? "X" : std::to_string(code);
    RemarkOnColumn({.kind = RemarkKindOf(fit), .found = cell, .taken = taken}, level, nullptr);
  }
  return code;
}

// Takes the name to the node, before the values are looked at.
bool TableReader::ReadName(std::string_view& rest) {
  const std::string_view name = TakeToken(rest, kTabs);
  const std::size_t entry = nodes_.FindEntry(row_.area);
  const bool isKnown = entry != nodes_.kNoEntry;
  if (!isKnown && !ConfirmsUnknownArea(name)) return false;
  RemarkOnSecondRow(isKnown ? lineOfRow_[entry] : lineOfUnknown_[row_.area.codes]);
  if (name == kKeepName || name.empty()) {
    if (isKnown && name.empty()) nodes_.ItemOf(entry)->SetName(CVELAString());
    return true;
  }
  if (HasBlanksAround(name)) RemarkOnBlanks(name, data_.numDataLevels);
  tell_.RemarkOnName(name, kNameColumn);
  if (isKnown) nodes_.ItemOf(entry)->SetName(CVELAString(name));
  return true;
}

// An area that the map does not have: the user says whether to go on.
bool TableReader::ConfirmsUnknownArea(std::string_view name) {
  std::string codes;
  for (int i = 0; i < data_.numDataLevels; ++i) {
    if (i > 0) codes += " / ";
    codes += std::to_string(row_.area.codes[static_cast<std::size_t>(i)]);
  }
  const CVELAString key = row_.area.GetAreasStr();
  MessageInfo about = tell_.Here({});
  about.area = key.View();
  about.name = name;
  return tell_.Show(MakeMessage(CHost::okCancel, Message::areaNotInMap, about, name, codes)) !=
         CHost::answerCancel;
}

bool TableReader::ReadValues(std::string_view& rest) {
  int column = 0;
  for (auto cell = TakeToken(rest, kTabs); !cell.empty(); cell = TakeToken(rest, kTabs), ++column) {
    if (column >= data_.numVars) return Refuse(Message::tooManyValues);
    row_.values[column] = ReadValue(cell, column);
    int& decimals = data_.varDecs[column];
    const int count = CountDecimals(cell, data_.decimal);
    if (count <= decimals) continue;
    decimals = count;
    if (count > kManyDecimals) RemarkOnDecimals(cell, column, count);
  }
  return column >= data_.numVars || Refuse(Message::tooFewValues);
}

double TableReader::ReadValue(std::string_view cell, int column) {
  const int number = data_.numDataLevels + 1 + column;
  if (HasBlanksAround(cell)) RemarkOnBlanks(cell, number);
  if (EqualNoCase(cell, data_.noValue.View())) return NO_DATA_VALUE;
  const NumberReading reading = ReadNumber(cell, data_.thousand, data_.decimal);
  if (reading.fit != NumberFit::whole) [[unlikely]] {
    const std::string taken = ShortestText(reading.value);
    RemarkOnColumn({.kind = RemarkKindOf(reading.fit), .found = cell, .taken = taken}, number,
                   &row_.area);
  }
  return reading.value;
}

bool TableReader::Refuse(Message number) {
  const CVELAString key = row_.area.GetAreasStr();
  MessageInfo about = tell_.Here({});
  about.area = key.View();
  tell_.Show(MakeMessage(CHost::ok, number, about, file_.lineNumber));
  return false;
}

// What the heading of a cell says, by the cell's number in its row from 0 on.
std::string_view TableReader::ColumnName(int cell) const {
  if (cell < data_.numDataLevels) return map_.GetLevelName(cell + 1).View();
  const int column = cell - data_.numDataLevels - 1;
  if (column < 0) return kNameColumn;
  return column < data_.numVars ? data_.varNames[column].View() : std::string_view();
}

void TableReader::RemarkOnColumn(RemarkInfo remark, int cell, const CAreaStruct* key) const {
  const CVELAString area = key == nullptr ? CVELAString() : key->GetAreasStr();
  remark.area = area.View();
  remark.column = std::max(cell - data_.numDataLevels, 0);
  remark.columnName = ColumnName(cell);
  tell_.Remark(remark);
}

// Tells of the first empty cell that moves others or is not made up for by the end of the row.
void TableReader::RemarkOnGaps(std::string_view line, bool isRow) const {
  CAreaStruct key;
  int cells = 0;      // with text
  int positions = 0;  // passed
  int gap = -1;       // the first without
  bool matters = false;
  for (std::size_t begin = 0; begin <= line.size(); ++positions) {
    const std::size_t end = std::min(line.find(kTab, begin), line.size());
    const std::string_view cell = line.substr(begin, end - begin);
    begin = end + 1;
    if (cell.empty()) {
      if (gap < 0) gap = positions;
      continue;
    }
    matters = matters || gap >= 0;
    if (cells < data_.numDataLevels) key.codes[static_cast<std::size_t>(cells)] = CodeOf(cell);
    ++cells;
  }
  if (!matters && gap >= CountCells()) return;
  RemarkOnColumn({.kind = RemarkKind::emptyCell, .expected = CountCells(), .counted = cells}, gap,
                 isRow ? &key : nullptr);
}

void TableReader::RemarkOnBlanks(std::string_view cell, int number) const {
  RemarkOnColumn({.kind = RemarkKind::blanksAroundCell, .found = cell}, number, nullptr);
}

void TableReader::RemarkOnDecimals(std::string_view cell, int column, int decimals) const {
  RemarkOnColumn({.kind = RemarkKind::manyDecimals, .found = cell, .counted = decimals},
                 data_.numDataLevels + 1 + column, &row_.area);
}

void TableReader::RemarkOnSecondRow(int& lineOfFirst) const {
  if (lineOfFirst == 0) {
    lineOfFirst = file_.lineNumber;
    return;
  }
  const CVELAString key = row_.area.GetAreasStr();
  tell_.Remark({.kind = RemarkKind::duplicateRow, .area = key.View(), .counted = lineOfFirst});
}

}  // namespace vexel
