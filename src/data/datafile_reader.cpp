#include "data/datafile_reader.h"

#include <array>
#include <string>

#include "brindle/meant_word.h"
#include "data/table_reader.h"
#include "map/formats.h"
#include "map/map.h"
#include "messages/remarks.h"
#include "platform/exceptions.h"
#include "platform/number.h"
#include "platform/path.h"
#include "platform/ref_or_throw.h"

namespace vexel {

namespace {

constexpr std::array<std::string_view, 11> kWords{
    "[MapDataFile]", "[Data]",  "Version",   "AreaLevels", "Variables", "MapFile",
    "LinkTo",        "NoValue", "Thousands", "Decimal",    "MapLabel"};

constexpr std::string_view kKeepName = "~";  // leave what the map says
constexpr int kMostDataLevels = CVELAMap::kMostLevels - 1;

// More columns than this, in all heads of a file together, are none that a table holds. Together:
// each head sizes the columns anew, and a file of many heads must not make that its only work.
constexpr int kMostVariables = 1'000'000;

// A file loads no more maps than this: each is added to those before it, and all of them are
// brought into the working space anew.
constexpr int kMostMaps = 4;

// Whether a file is long enough for a row of that many columns: each takes a character and a tab.
// Of some files that the system makes the length is not known.
bool CanHold(const CSpecFile& file, int columns) {
  return file.GetLength() == 0 || file.GetLength() / 2 >= columns;
}

}  // namespace

std::span<const std::string_view> DataFileWords() noexcept { return kWords; }

bool DataFileReader::ReadFile(const CString& path) {
  const bool isRead = ReadSections();
  if (file_.HasFailed()) {
    tell_.TellOfFile(Message::readFailed, path);
    return false;
  }
  if (isRead && tables_ == 0) tell_.RemarkOnFile({.kind = RemarkKind::noRows});
  return isRead;
}

bool DataFileReader::ReadSections() {
  while (file_.state == 0) {
    CSpecFile::Line line;
    if (!file_.NextLine(line) || !EqualNoCase(line.command, "[MapDataFile]")) {
      if (file_.HasFailed()) return false;
      RemarkOnWord(line.command);
      tell_.Tell(Message::notADataFile, line.command);
      return false;
    }
    if (!ReadHead()) return false;
    UnifyMapLabel();
  }
  return true;
}

// The label of the file and the name of the area on show end equal.
void DataFileReader::UnifyMapLabel() {
  CMapOb* root = data_.LinkedMap().GetDrawRoot();
  if (data_.mapLabel.View() != kKeepName) root->SetName(data_.mapLabel);
  data_.mapLabel = root->GetName();
  if (data_.mapLabel.IsEmpty())
    tell_.RemarkOnFile({.kind = RemarkKind::noName, .columnName = "MapLabel"});
}

void DataFileReader::RemarkOnRepetition(std::string_view keyword) {
  const auto* word = std::find_if(kWords.begin(), kWords.end(), [=](std::string_view each) {
    return EqualNoCase(each, keyword);
  });
  if (word == kWords.end()) return;
  const auto bit = static_cast<std::size_t>(word - kWords.begin());
  if (seen_.test(bit)) tell_.Remark({.kind = RemarkKind::repeatedKeyword, .found = *word});
  seen_.set(bit);
}

bool DataFileReader::ReadHead() {
  seen_.reset();
  CSpecFile::Line line;
  while (file_.state == 0 && file_.NextLine(line)) {
    if (!line.IsHeading()) {
      if (!ReadKeyword(line.command, line.argument)) return false;
    } else if (EqualNoCase(line.command, "[Data]")) {
      if (!IsReadyForRows() || data_.BuildData(file_, quiet_) == 0) return false;
      ++tables_;
    } else {
      RemarkOnWord(line.command);
      tell_.Tell(Message::invalidHeading, line.command, file_.lineNumber, line.command);
      file_.SkipSection();
      return true;
    }
  }
  return true;
}

bool DataFileReader::IsReadyForRows() {
  if (data_.thousand == data_.decimal) {
    tell_.Tell(Message::sameSeparators, {}, "Thousands", "Decimal");
  } else if (data_.numDataLevels == 0) {
    tell_.Tell(Message::missingStatement, {}, "AreaLevels");
  } else if (data_.numVars == 0) {
    tell_.Tell(Message::missingStatement, {}, "Variables");
  } else if (!CanHold(file_, data_.numVars)) {
    tell_.Tell(Message::invalidParameterAtLine, {}, "Variables", file_.lineNumber);
  } else {
    return true;
  }
  return false;
}

bool DataFileReader::ReadKeyword(std::string_view keyword, std::string_view value) {
  const auto is = [=](std::string_view name) { return EqualNoCase(keyword, name); };
  RemarkOnRepetition(keyword);
  if (is("AreaLevels")) return SetAreaLevels(value);
  if (is("Variables")) return SetVariables(value);
  if (is("MapFile")) return loadMap_ == 0 || LoadMap(value);
  if (is("Version")) {
    SetVersion(value);
  } else if (is("LinkTo")) {
    data_.linkToFile.Assign(value);
  } else if (is("Thousands")) {
    SetThousandWord(value);
  } else if (is("Decimal")) {
    SetDecimalWord(value);
  } else if (is("NoValue")) {
    data_.noValue.Assign(value);
  } else if (is("MapLabel")) {
    tell_.RemarkOnName(value, "MapLabel");
    data_.mapLabel.Assign(value);
  } else {
    RemarkOnWord(keyword);
    tell_.Tell(Message::unrecognizedCommand, keyword, file_.lineNumber, keyword);
  }
  return true;
}

int DataFileReader::CountOf(std::string_view keyword, std::string_view value) const {
  const int count = LowInt32(ToWholeNumber(value));
  if (const NumberFit fit = FitOfInt32(value); fit != NumberFit::whole) {
    const std::string taken = std::to_string(count);
    tell_.Remark(
        {.kind = RemarkKindOf(fit), .columnName = keyword, .found = value, .taken = taken});
  }
  return count;
}

bool DataFileReader::SetAreaLevels(std::string_view value) {
  const int count = CountOf("AreaLevels", value);
  if (count < 0 || count > kMostDataLevels) {
    tell_.Tell(Message::invalidParameterAtLine, value, "AreaLevels", file_.lineNumber);
    return false;
  }
  data_.numDataLevels = count;
  return true;
}

bool DataFileReader::SetVariables(std::string_view value) {
  const int count = CountOf("Variables", value);
  if (count < 0 || count > kMostVariables - statedColumns_) {
    tell_.Tell(Message::invalidParameterAtLine, value, "Variables", file_.lineNumber);
    return false;
  }
  statedColumns_ += count;
  data_.numVars = count;
  data_.varNames.SetSize(count + 1);
  data_.varDecs.SetSize(count + 1);
  return true;
}

void DataFileReader::SetVersion(std::string_view value) {
  data_.oldVersion = value == kTextVersion ? 0 : 1;
  if (data_.oldVersion != 0 && value != kOldTextVersion)
    tell_.Remark({.kind = RemarkKind::unknownVersion, .found = value});
}

void DataFileReader::SetThousandWord(std::string_view value) {
  if (EqualNoCase(value, "Dot")) {
    data_.thousand = '.';
  } else if (EqualNoCase(value, "Space")) {
    data_.thousand = ' ';
  } else {
    if (!EqualNoCase(value, "Comma")) tell_.Tell(Message::invalidThousands, value);
    data_.thousand = ',';
  }
}

void DataFileReader::SetDecimalWord(std::string_view value) {
  if (EqualNoCase(value, "Comma")) {
    data_.decimal = ',';
  } else {
    if (!EqualNoCase(value, "Dot")) tell_.Tell(Message::invalidDecimal, value);
    data_.decimal = '.';
  }
}

bool DataFileReader::LoadMap(std::string_view value) {
  data_.mapFile.Assign(value);
  if (value.empty()) {
    tell_.Tell(Message::noMapFileGiven, value);
    return false;
  }
  const bool isWhole = value.find(':') != std::string_view::npos;
  const CString name = isWhole ? CString(value) : data_.dataFolder + CString(value);
  const CString path = NewerMapFile(name);
  if (path.IsEmpty()) {
    tell_.Tell(Message::mapFileNotFound, value, value);
    return false;
  }
  if (++loadedMaps_ > kMostMaps) {
    tell_.Tell(Message::invalidParameterAtLine, value, "MapFile", file_.lineNumber);
    return false;
  }
  data_.mapIsText = IsCompiledMapName(path.View()) ? 0 : 1;
  CVELAMap& map = data_.LinkedMap();
  map.mapLoaded = map.Build(path, 0, quiet_);
  return map.mapLoaded != 0;
}

void DataFileReader::RemarkOnWord(std::string_view line) const {
  const std::string_view meant = MeantWord(line, kWords);
  if (meant.empty()) return;
  tell_.Remark({.kind = RemarkKind::blanksInWord, .found = line, .taken = meant});
}

}  // namespace vexel

// What the data set itself offers of its reader.

int CVELAData::Build(const CString& path, int loadMap, int quiet) {
  CSpecFile file(0);
  if (file.Open(path.GetString(), 0) == 0) {
    vexel::DataTeller(error, file, quiet).TellOfFile(vexel::Message::dataFileNotOpened, path);
    return 0;
  }
  dataFolder = CVELAString(vexel::SplitPath(path.View()).folder);
  return vexel::DataFileReader(*this, file, loadMap, quiet).ReadFile(path) ? 1 : 0;
}

int CVELAData::Build(CSpecFile& file, int loadMap, int quiet) {
  return vexel::DataFileReader(*this, file, loadMap, quiet).ReadHead() ? 1 : 0;
}

int CVELAData::BuildData(CSpecFile& file, int quiet) {
  if (numDataLevels > vexel::kMostDataLevels || numVars < 0) AfxThrowInvalidArgException();
  return vexel::TableReader(*this, file, quiet).Read() ? 1 : 0;
}

CVELAMap& CVELAData::LinkedMap() const { return vexel::RefOrThrow(map); }
