// Writing a map data file.

#include <algorithm>
#include <string>

#include "brindle/specfile.h"
#include "data/dataset.h"
#include "data/nodeindex.h"
#include "map/formats.h"
#include "map/map.h"
#include "messages/messages.h"
#include "platform/path.h"
#include "platform/profile.h"
#include "platform/ref_or_throw.h"

namespace {

using vexel::Message;
using vexel::NumberSeparators;

// The words of the file's head for two separators, and the separators that go with them.
struct Separators {
  NumberSeparators characters;
  const char* thousands;
  const char* decimal;
};

// What the machine says, as far as the file has words for it. A decimal separator without one gives
// way to a dot. A thousands separator without one is left out of the numbers, and its word is
// empty, which a reader takes for a comma; next to a decimal comma that would not do.
Separators WordsFor(NumberSeparators wanted) {
  const char decimal = wanted.decimal == ',' ? ',' : '.';
  const char* decimalWord = decimal == ',' ? "Comma" : "Dot";
  if (wanted.thousand == ' ') return {{' ', decimal}, "Space", decimalWord};
  if (wanted.thousand != decimal) {
    if (wanted.thousand == ',') return {{',', decimal}, "Comma", decimalWord};
    if (wanted.thousand == '.') return {{'.', decimal}, "Dot", decimalWord};
  }
  const char* thousandsWord = "";
  if (decimal == ',') {
    thousandsWord = "Dot";
  } else if (wanted.thousand == decimal) {
    thousandsWord = "Comma";
  }
  return {{0, decimal}, thousandsWord, decimalWord};
}

// A cell's text: what would break the table becomes a blank, and what would vanish from it is
// replaced.
std::string Cell(std::string_view text, std::string_view whenEmpty) {
  std::string cell(text.empty() ? whenEmpty : text);
  std::replace_if(
      cell.begin(), cell.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
  return cell;
}

}  // namespace

void CVELAMap::SaveMdf(const CVELAString& path) {
  const vexel::PathParts parts = vexel::SplitPath(vexel::RefOrThrow(data).mapFile.View());
  mdfPath = path;
  mapPath = CVELAString(parts.folder) + CString(parts.name);
  if (floatsLoaded != 0 && SaveMpc(mapPath + ".mpc") == 0) return;
  CSpecFile file(0);
  if (file.Open(path.GetString(), 1) == 0) {
    vexel::TellOfFile(CHost::warning, Message::dataFileNotOpened, file, path);
    return;
  }
  SaveMdfSpec(file);
  if (file.Close() == 0) vexel::TellOfFile(CHost::warning, Message::writeFailed, file, path);
}

void CVELAMap::SaveMdfSpec(CSpecFile& file) {
  vexel::RefOrThrow(data).WriteTo(file, *this, mapPath.View());
}

void CVELAData::WriteTo(CSpecFile& file, CVELAMap& tree, std::string_view mapBase) const {
  const Separators separators = WordsFor(vexel::MachineSeparators({thousand, decimal}));
  const vexel::PathParts mapParts = vexel::SplitPath(mapBase);
  const std::string missing = MissingText();
  file.PutLine("[MapDataFile]");
  file.PutLine("Version", CVELAString(vexel::kTextVersion));
  file.PutLine("MapFile", CVELAString(mapParts.name) + CString(mapParts.extension));
  file.PutLine("AreaLevels", numDataLevels);
  file.PutLine("Variables", numVars);
  file.PutLine("Thousands", separators.thousands);
  file.PutLine("Decimal", separators.decimal);
  file.PutLine("NoValue", CVELAString(missing));
  file.PutLine("MapLabel", mapLabel);
  file.PutLine("");
  file.PutLine("[Data]");
  WriteHeader(file, tree);
  vexel::AreaIndex<CMapOb> nodes = vexel::IndexNodes(tree);
  std::string line;
  for (const CAreaData& row : areas) {
    line.clear();
    AppendKeyAndName(line, row, nodes.Find(row.area));
    for (int i = 0; i < numVars; ++i) {
      const double value = row.GetValue(i);
      line += '\t';
      if (value == NO_DATA_VALUE) {
        line += missing;
      } else {
        line += d2txt(value, static_cast<unsigned>(std::max(varDecs[i], 0)),
                      separators.characters.thousand, separators.characters.decimal, 1);
      }
    }
    file.PutText(line);
  }
}

// The text of a missing value. An empty one would vanish from the rows that need it.
std::string CVELAData::MissingText() const {
  const std::string cell = Cell(noValue.View(), "");
  const std::string_view text = vexel::TrimBlanks(cell);
  if (!text.empty()) return std::string(text);
  const bool isNeeded = std::any_of(areas.begin(), areas.end(), [&](const CAreaData& row) {
    const auto* end = row.values.begin() + std::clamp(numVars, 0, row.values.GetSize());
    return std::find(row.values.begin(), end, NO_DATA_VALUE) != end;
  });
  return isNeeded ? "N/A" : "";
}

void CVELAData::WriteHeader(CSpecFile& file, const CVELAMap& tree) const {
  std::string line;
  for (int i = 1; i <= numDataLevels; ++i) {
    line.append(Cell(tree.GetLevelName(i).View(), "~")).append("\t");
  }
  line += "Area Name";
  for (int i = 0; i < numVars; ++i) {
    line.append("\t").append(Cell(varNames[i].View(), "Column " + std::to_string(i + 1)));
  }
  file.PutText(line);
}

void CVELAData::AppendKeyAndName(std::string& line, const CAreaData& row,
                                 const CMapOb* node) const {
  for (int i = 0; i < numDataLevels; ++i) {
    line.append(std::to_string(row.area.codes[static_cast<std::size_t>(i)])).append("\t");
  }
  line += node == nullptr ? "~" : Cell(node->GetName().View(), "~");
}
