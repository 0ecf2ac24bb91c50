#include "texts.h"

#include <vexel/platform/string.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace vexel::import {

namespace {

// What would break a line or a table becomes a blank, and what would vanish is replaced.
std::string Line(std::string_view text, std::string_view whenEmpty) {
  std::string line(TrimBlanks(text));
  std::replace_if(
      line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return line.empty() ? std::string(whenEmpty) : line;
}

void AppendVertex(std::string& to, const Vertex& vertex) {
  std::array<char, 96> line;
  char* const end = line.data() + line.size();
  char* at = std::to_chars(line.data(), end, vertex.x, std::chars_format::fixed).ptr;
  *at++ = ' ';
  at = std::to_chars(at, end, vertex.y, std::chars_format::fixed).ptr;
  *at++ = '\n';
  to.append(line.data(), at);
}

void AppendArea(std::string& to, const Area& area, bool isGroup) {
  to.append(isGroup ? "\n[GeoGroup]\nName=" : "\n[GeoUnit]\nName=")
      .append(Line(area.name, "?"))
      .append("\nAreaStructure=");
  for (std::size_t i = 0; i < area.codes.size(); ++i) {
    to.append(i == 0 ? "" : ", ").append(std::to_string(area.codes[i]));
  }
  to += '\n';
  for (const Ring& ring : area.shape) {
    to.append(ring.isHole ? "[Polygon]\nHole=Yes\n" : "[Polygon]\n");
    for (const Vertex& vertex : ring.vertices) AppendVertex(to, vertex);
  }
}

}  // namespace

std::string MapText(const AreaTree& tree, const std::string& name,
                    const std::vector<std::string>& levels, bool inDegrees) {
  std::string text = "[Map]\nVersion=Ortex 3.2\nMapName=" + Line(name, "Map") +
                     "\nLongLat=" + (inDegrees ? "Yes" : "No") + "\n\n[AreaLevels]\n";
  for (const std::string& level : levels) text += "Name=" + Line(level, "Level") + '\n';
  std::size_t open = 0;
  const auto close = [&](std::size_t level) {
    for (; open >= level; --open) text += "\n[EndGroup]\n";
  };
  for (std::size_t i = 0; i < tree.areas.size(); ++i) {
    const std::size_t level = tree.areas[i].Level();
    if (open >= level) close(level);
    const bool isGroup = i + 1 < tree.areas.size() && tree.areas[i + 1].Level() > level;
    AppendArea(text, tree.areas[i], isGroup);
    if (isGroup) open = level;
  }
  if (open > 0) close(1);
  return text;
}

std::string DataText(const std::string& mapFile, const std::vector<std::string>& levels,
                     const std::vector<DataRow>& rows, const std::vector<DataColumn>& columns) {
  constexpr std::string_view kMissing = "N/A";
  std::string text = "[MapDataFile]\nVersion=Ortex 3.2\nMapFile=" + mapFile +
                     "\nAreaLevels=" + std::to_string(levels.size()) +
                     "\nVariables=" + std::to_string(columns.size()) +
                     "\nThousands=Comma\nDecimal=Dot\nNoValue=" + std::string(kMissing) +
                     "\nMapLabel=~\n\n[Data]\n";
  for (const std::string& level : levels) text += Line(level, "~") + '\t';
  text += "Area Name";
  for (const DataColumn& column : columns) text += '\t' + Line(column.name, "Column");
  text += '\n';
  for (const DataRow& row : rows) {
    for (std::size_t i = 0; i < levels.size(); ++i) {
      text += (i < row.codes.size() ? std::to_string(row.codes[i]) : "X") + '\t';
    }
    text += '~';
    for (const DataColumn& column : columns) {
      const std::string& value = column.values[row.index];
      text.append("\t").append(value.empty() ? kMissing : std::string_view(value));
    }
    text += '\n';
  }
  return text;
}

}  // namespace vexel::import
