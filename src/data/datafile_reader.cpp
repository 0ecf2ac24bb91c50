// Reading a map data file: its head, the map it names, its table.

#include <algorithm>
#include <string>

#include "brindle/specfile.h"
#include "data/dataset.h"
#include "data/nodeindex.h"
#include "map/map.h"
#include "messages/messages.h"
#include "platform/exceptions.h"
#include "platform/host.h"
#include "platform/number.h"
#include "platform/path.h"
#include "platform/ref_or_throw.h"

namespace {

using vexel::EqualNoCase;
using vexel::Message;

constexpr std::string_view kTab = "\t";
constexpr std::string_view kKeep = "~";  // leave what the map says
constexpr int kMostDataLevels = CVELAMap::kMostLevels - 1;

// More columns than this, in all heads of a file together, are none that a table holds. Together:
// each head sizes the columns anew, and a file of many heads must not make that its only work.
constexpr int kMostVariables = 1'000'000;

// Whether a file is long enough for a row of that many columns: each takes a character and a tab.
// Of what is no regular file the length is not known.
bool CanHold(const CSpecFile& file, int columns) {
  return file.GetLength() == 0 || file.GetLength() / 2 >= columns;
}

// A message about the line that the file is at.
template <typename... Values>
vexel::MessageInfo AtLine(unsigned flags, Message number, const CSpecFile& file,
                          std::string_view found, const Values&... values) {
  return vexel::MakeMessage(
      flags, number, {.file = file.GetPath(), .line = file.lineNumber, .found = found}, values...);
}

bool IsMapFile(const CString& path, CFileStatus& status) {
  return CFile::GetStatus(path.GetString(), status) != 0 && !status.isDirectory;
}

// Characters behind the last separator, 0 without one.
int CountDecimals(std::string_view cell, char separator) {
  const std::size_t at = cell.rfind(separator);
  return at == std::string_view::npos ? 0 : static_cast<int>(cell.size() - at - 1);
}

}  // namespace

// Keeps the text of a message where the host can read it and, unless quiet, shows it. Gives the
// answer to the box, OK without one.
int CVELAData::Report(const vexel::MessageInfo& message, int quiet) {
  error = message.text;
  return quiet != 0 ? CHost::answerOk : vexel::Tell(message);
}

void CVELAData::ReportFile(vexel::Message number, const CFile& file, const CString& path,
                           int quiet) {
  const std::string reason = file.GetReason();
  Report(vexel::MakeMessage(CHost::ok, number, {.file = path.View(), .reason = reason}, path),
         quiet);
}

int CVELAData::Build(const CString& path, int loadMap, int quiet) {
  CSpecFile file(0);
  if (file.Open(path.GetString(), 0) == 0) {
    ReportFile(Message::dataFileNotOpened, file, path, quiet);
    return 0;
  }
  dataFolder = CVELAString(vexel::SplitPath(path.View()).folder);
  statedColumns_ = 0;
  int loaded = 1;
  while (file.state == 0) {
    CSpecFile::Line line;
    if (!file.NextLine(line) || !EqualNoCase(line.command, "[MapDataFile]")) {
      if (!file.HasFailed()) {
        Report(AtLine(CHost::ok, Message::notADataFile, file, line.command), quiet);
        return 0;
      }
      break;
    }
    if (BuildHead(file, loadMap, quiet) == 0) {
      loaded = 0;
      break;
    }
    SettleMapLabel();
  }
  if (!file.HasFailed()) return loaded;
  ReportFile(Message::readFailed, file, path, quiet);
  return 0;
}

// The label of the file and the name of the area on show end equal.
void CVELAData::SettleMapLabel() {
  CMapOb* root = Map().GetDrawRoot();
  if (mapLabel.View() != kKeep) root->SetName(mapLabel);
  mapLabel = root->GetName();
}

CVELAMap& CVELAData::Map() const { return vexel::RefOrThrow(map); }

int CVELAData::Build(CSpecFile& file, int loadMap, int quiet) {
  statedColumns_ = 0;
  return BuildHead(file, loadMap, quiet);
}

int CVELAData::BuildHead(CSpecFile& file, int loadMap, int quiet) {
  CSpecFile::Line line;
  while (file.state == 0 && file.NextLine(line)) {
    if (!line.IsHeading()) {
      if (!BuildKeyword(file, line.command, line.argument, loadMap, quiet)) return 0;
    } else if (EqualNoCase(line.command, "[Data]")) {
      if (!IsReadyForRows(file, quiet) || BuildData(file, quiet) == 0) return 0;
    } else {
      Report(AtLine(CHost::ok, Message::invalidHeading, file, line.command, file.lineNumber,
                    line.command),
             quiet);
      file.SkipSection();
      return 1;
    }
  }
  return 1;
}

bool CVELAData::IsReadyForRows(const CSpecFile& file, int quiet) {
  vexel::MessageInfo missing;
  if (thousand == decimal) {
    missing = AtLine(CHost::ok, Message::sameSeparators, file, {}, "Thousands", "Decimal");
  } else if (numDataLevels == 0) {
    missing = AtLine(CHost::ok, Message::missingStatement, file, {}, "AreaLevels");
  } else if (numVars == 0) {
    missing = AtLine(CHost::ok, Message::missingStatement, file, {}, "Variables");
  } else if (!CanHold(file, numVars)) {
    missing =
        AtLine(CHost::ok, Message::invalidParameterAtLine, file, {}, "Variables", file.lineNumber);
  } else {
    return true;
  }
  Report(missing, quiet);
  return false;
}

bool CVELAData::BuildKeyword(CSpecFile& file, std::string_view keyword, std::string_view value,
                             int loadMap, int quiet) {
  const auto is = [=](std::string_view name) { return EqualNoCase(keyword, name); };
  if (is("AreaLevels")) return SetAreaLevels(file, value, quiet);
  if (is("Variables")) return SetVariables(file, value, quiet);
  if (is("MapFile")) return loadMap == 0 || LoadMap(file, value, quiet);
  if (is("Version")) {
    oldVersion = value == "Ortex 3.2" ? 0 : 1;
  } else if (is("LinkTo")) {
    linkToFile.Assign(value);
  } else if (is("Thousands")) {
    SetThousandWord(file, value, quiet);
  } else if (is("Decimal")) {
    SetDecimalWord(file, value, quiet);
  } else if (is("NoValue")) {
    noValue.Assign(value);
  } else if (is("MapLabel")) {
    mapLabel.Assign(value);
  } else {
    Report(AtLine(CHost::ok, Message::unrecognizedCommand, file, keyword, file.lineNumber, keyword),
           quiet);
  }
  return true;
}

bool CVELAData::SetAreaLevels(const CSpecFile& file, std::string_view value, int quiet) {
  const int count = vexel::LowInt32(vexel::ToWholeNumber(value));
  if (count < 0 || count > kMostDataLevels) {
    Report(AtLine(CHost::ok, Message::invalidParameterAtLine, file, value, "AreaLevels",
                  file.lineNumber),
           quiet);
    return false;
  }
  numDataLevels = count;
  return true;
}

bool CVELAData::SetVariables(const CSpecFile& file, std::string_view value, int quiet) {
  const int count = vexel::LowInt32(vexel::ToWholeNumber(value));
  if (count < 0 || count > kMostVariables - statedColumns_) {
    Report(AtLine(CHost::ok, Message::invalidParameterAtLine, file, value, "Variables",
                  file.lineNumber),
           quiet);
    return false;
  }
  statedColumns_ += count;
  numVars = count;
  varNames.SetSize(count + 1);
  varDecs.SetSize(count + 1);
  return true;
}

void CVELAData::SetThousandWord(const CSpecFile& file, std::string_view value, int quiet) {
  if (EqualNoCase(value, "Dot")) {
    thousand = '.';
  } else if (EqualNoCase(value, "Space")) {
    thousand = ' ';
  } else {
    if (!EqualNoCase(value, "Comma"))
      Report(AtLine(CHost::ok, Message::invalidThousands, file, value), quiet);
    thousand = ',';
  }
}

void CVELAData::SetDecimalWord(const CSpecFile& file, std::string_view value, int quiet) {
  if (EqualNoCase(value, "Comma")) {
    decimal = ',';
  } else {
    if (!EqualNoCase(value, "Dot")) {
      Report(AtLine(CHost::ok, Message::invalidDecimal, file, value), quiet);
    }
    decimal = '.';
  }
}

// Loads the newer of the compiled and the text map; with equal times the compiled one.
bool CVELAData::LoadMap(const CSpecFile& file, std::string_view value, int quiet) {
  mapFile.Assign(value);
  if (mapFile.IsEmpty()) {
    Report(AtLine(CHost::ok, Message::noMapFileGiven, file, {}), quiet);
    return false;
  }
  const CString base = mapFile.Find(':') >= 0 ? CString(mapFile) : dataFolder + mapFile;
  const CString compiled = base + ".mpc";
  const CString text = base + ".map";
  CFileStatus compiledStatus;
  CFileStatus textStatus;
  const bool hasCompiled = IsMapFile(compiled, compiledStatus);
  const bool hasText = IsMapFile(text, textStatus);
  if (!hasCompiled && !hasText) {
    Report(AtLine(CHost::ok, Message::mapFileNotFound, file, value, value), quiet);
    return false;
  }
  const bool takeText = !hasCompiled || (hasText && textStatus.mtime > compiledStatus.mtime);
  mapIsText = takeText ? 1 : 0;
  Map().mapLoaded = Map().Build(takeText ? text : compiled, 0, quiet);
  return Map().mapLoaded != 0;
}

bool CVELAData::BuildHeader(CSpecFile& file, int quiet) {
  CSpecFile::Line line;
  if (!file.NextLine(line)) return false;
  std::string_view rest = line.command;
  for (int i = 0; i < numDataLevels; ++i) {
    const std::string_view cell = vexel::TakeToken(rest, kTab);
    if (cell.empty()) {
      Report(AtLine(CHost::ok, Message::tooFewLevelNames, file, line.command, file.lineNumber),
             quiet);
      return false;
    }
    if (cell != kKeep) Map().levelNames[static_cast<std::size_t>(i) + 1].Assign(cell);
  }
  vexel::TakeToken(rest, kTab);
  for (int i = 0; i < numVars; ++i) {
    const std::string_view cell = vexel::TakeToken(rest, kTab);
    if (cell.empty()) {
      Report(AtLine(CHost::ok, Message::tooFewVariableNames, file, line.command, file.lineNumber),
             quiet);
      return false;
    }
    varNames[i].Assign(cell);
  }
  return true;
}

// Reads the rows of a table. One row buffer serves them all; its last value, the calculated one,
// stays 0.
class CVELAData::RowReader {
 public:
  RowReader(CVELAData& data, CSpecFile& file, int quiet)
      : data_(data), file_(file), quiet_(quiet), nodes_(vexel::IndexNodes(data.Map())) {
    row_.values.SetSize(data.numVars + 1);
  }

  bool ReadAll() {
    CSpecFile::Line line;
    while (file_.state == 0 && file_.NextLine(line)) {
      std::string_view rest = line.command;
      if (!ReadKey(rest) || !ReadName(rest) || !ReadValues(rest)) return false;
      data_.AddAreaData(row_);
    }
    return true;
  }

 private:
  bool Refuse(Message number) {
    const CVELAString key = row_.area.GetAreasStr();
    vexel::MessageInfo message = AtLine(CHost::ok, number, file_, {}, file_.lineNumber);
    message.area = key.View();
    data_.Report(message, quiet_);
    return false;
  }

  bool ReadKey(std::string_view& rest) {
    for (int i = 0; i < data_.numDataLevels; ++i) {
      const std::string_view cell = vexel::TakeToken(rest, kTab);
      if (cell.empty()) return Refuse(Message::areaLevelMissing);
      row_.area.codes[static_cast<std::size_t>(i)] = CodeOf(cell);
    }
    return true;
  }

  std::int32_t CodeOf(std::string_view cell) const {
    const bool isOld = data_.oldVersion != 0;
    if (!isOld && EqualNoCase(cell, "X")) return CAreaStruct::kUnset;
    const std::int64_t number = vexel::ToWholeNumber(cell);
    return isOld && number == 0 ? CAreaStruct::kUnset : vexel::LowInt32(number);
  }

  // Takes the name to the node, before the values are looked at.
  bool ReadName(std::string_view& rest) {
    const std::string_view name = vexel::TakeToken(rest, kTab);
    CMapOb* node = nodes_.Find(row_.area);
    if (node == nullptr) return ConfirmsUnknownArea(name);
    if (name != kKeep) node->SetName(CVELAString(name));
    return true;
  }

  // An area that the map does not have: the user says whether to go on.
  bool ConfirmsUnknownArea(std::string_view name) {
    std::string codes;
    for (int i = 0; i < data_.numDataLevels; ++i) {
      if (i > 0) codes += " / ";
      codes += std::to_string(row_.area.codes[static_cast<std::size_t>(i)]);
    }
    const CVELAString key = row_.area.GetAreasStr();
    vexel::MessageInfo message =
        AtLine(CHost::okCancel, Message::areaNotInMap, file_, {}, name, codes);
    message.area = key.View();
    message.name = name;
    return data_.Report(message, quiet_) != CHost::answerCancel;
  }

  bool ReadValues(std::string_view& rest) {
    int column = 0;
    for (auto cell = vexel::TakeToken(rest, kTab); !cell.empty();
         cell = vexel::TakeToken(rest, kTab), ++column) {
      if (column >= data_.numVars) return Refuse(Message::tooManyValues);
      row_.values[column] = ValueOf(cell);
      int& decimals = data_.varDecs[column];
      decimals = std::max(decimals, CountDecimals(cell, data_.decimal));
    }
    return column >= data_.numVars || Refuse(Message::tooFewValues);
  }

  double ValueOf(std::string_view cell) const {
    if (EqualNoCase(cell, data_.noValue.View())) return NO_DATA_VALUE;
    return vexel::ToNumber(cell, data_.thousand, data_.decimal);
  }

  CVELAData& data_;
  CSpecFile& file_;
  int quiet_;
  vexel::AreaIndex<CMapOb> nodes_;
  CAreaData row_;
};

int CVELAData::BuildData(CSpecFile& file, int quiet) {
  if (numDataLevels > kMostDataLevels || numVars < 0) AfxThrowInvalidArgException();
  if (!BuildHeader(file, quiet)) return 0;
  return RowReader(*this, file, quiet).ReadAll() ? 1 : 0;
}
