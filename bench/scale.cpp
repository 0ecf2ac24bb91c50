#include "scale.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "map/map.h"

namespace vexel {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kKey = "AreaStructure=";
constexpr std::string_view kRowsHeading = "[Data]";
constexpr double kGap = 1.05;  // of a tile to the next, in tiles
constexpr int kDecimals = 4;   // of a coordinate in a map file

fs::path& WorkFolder() {
  static fs::path folder = ".";
  return folder;
}

fs::path SampleFile(const char* name) { return fs::path(VEXEL_SAMPLES_DIR) / name; }

// Hands over each line of a text, without its end.
template <typename Take>
void ForEachLine(std::string_view text, Take take) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    take(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

int CountLines(std::string_view text, std::string_view start) {
  int count = 0;
  ForEachLine(text, [&](std::string_view line) { count += line.starts_with(start) ? 1 : 0; });
  return count;
}

struct Point {
  double x = 0.0;
  double y = 0.0;
};

// The two numbers of a coordinate line; false for any other line.
bool ReadPoint(std::string_view line, Point& point) {
  const char* const end = line.data() + line.size();
  const auto x = std::from_chars(line.data(), end, point.x);
  return x.ec == std::errc() && x.ptr != end && *x.ptr == ' ' &&
         std::from_chars(x.ptr + 1, end, point.y).ec == std::errc();
}

void AppendNumber(std::string& to, double number) {
  std::array<char, 40> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                 std::chars_format::fixed, kDecimals);
  to.append(text.data(), end.ptr);
}

void AppendPoint(std::string& to, double x, double y) {
  AppendNumber(to, x);
  to += ' ';
  AppendNumber(to, y);
  to += '\n';
}

// The nodes of the sample map, as lines, and what they cover.
struct Tile {
  explicit Tile(const std::string& map) : nodes(map.substr(map.find("[GeoGroup]"))) {
    ForEachLine(nodes, [&](std::string_view line) {
      Point point;
      if (!ReadPoint(line, point)) return;
      low = {std::min(low.x, point.x), std::min(low.y, point.y)};
      high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    });
  }

  std::string nodes;
  Point low{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
  Point high{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};
};

void AppendFrame(std::string& to, const Tile& tile, Point shift) {
  to += "[Polygon]\n";
  AppendPoint(to, tile.low.x + shift.x, tile.low.y + shift.y);
  AppendPoint(to, tile.low.x + shift.x, tile.high.y + shift.y);
  AppendPoint(to, tile.high.x + shift.x, tile.high.y + shift.y);
  AppendPoint(to, tile.high.x + shift.x, tile.low.y + shift.y);
}

void AppendCopy(std::string& to, const Tile& tile, int copy, Point shift) {
  const std::string number = std::to_string(copy);
  to += "[GeoGroup]\nName=Copy " + number + '\n' + std::string(kKey) + number + "\n\n";
  AppendFrame(to, tile, shift);
  to += '\n';
  ForEachLine(tile.nodes, [&](std::string_view line) {
    Point point;
    if (ReadPoint(line, point)) {
      AppendPoint(to, point.x + shift.x, point.y + shift.y);
      return;
    }
    if (line.starts_with(kKey)) {
      to.append(kKey).append(number).append(", ");
      line.remove_prefix(kKey.size());
    }
    to.append(line).append("\n");
  });
  to += "\n[EndGroup]\n\n";
}

void WriteWholeFile(const fs::path& path, std::string_view text) {
  std::ofstream file(path, std::ios::binary);
  if (!file.write(text.data(), static_cast<std::streamsize>(text.size())).flush()) {
    throw std::runtime_error("cannot write " + path.filename().string());
  }
}

void WriteMap(const fs::path& path, int copies) {
  const Tile tile(ReadWholeFile(SampleFile("us-counties.map")));
  const int columns = static_cast<int>(std::ceil(std::sqrt(copies)));
  std::string text =
      "[Map]\nVersion=Ortex 3.2\nMapName=Counties in copies\nLongLat=No\n\n"
      "[AreaLevels]\nName=Copy\nName=State\nName=County\n\n";
  for (int i = 0; i < copies; ++i) {
    AppendCopy(text, tile, i + 1,
               {(tile.high.x - tile.low.x) * kGap * (i % columns),
                (tile.high.y - tile.low.y) * kGap * (i / columns)});
  }
  WriteWholeFile(path, text);
}

// The head of a data file up to and with the line of column names, and the rows.
struct DataText {
  explicit DataText(const std::string& text) {
    const std::size_t names = text.find('\n', text.find(kRowsHeading)) + 1;
    const std::size_t first = text.find('\n', names) + 1;
    head = text.substr(0, names);
    columns = text.substr(names, first - names);
    rows = text.substr(first);
  }

  std::string head;
  std::string columns;
  std::string rows;
};

void WriteData(const fs::path& path, int copies) {
  const DataText sample(ReadWholeFile(SampleFile("us-counties.mdf")));
  std::string text = sample.head;
  constexpr std::string_view kLevels = "AreaLevels=2";
  text.replace(text.find(kLevels), kLevels.size(), "AreaLevels=3");
  text += "Copy\t" + sample.columns;
  for (int i = 1; i <= copies; ++i) {
    const std::string number = std::to_string(i);
    ForEachLine(sample.rows, [&](std::string_view row) {
      text.append(number).append("\t").append(row).append("\n");
    });
  }
  WriteWholeFile(path, text);
}

void Compile(const Sample& sample) {
  CVELAMap map;
  if (map.Build(CString(sample.map.c_str()), 0, 0) == 0 ||
      map.SaveMpc(CVELAString(sample.compiled.c_str())) == 0) {
    throw std::runtime_error("cannot compile " + sample.map.filename().string());
  }
}

Sample MakeSample(int copies) {
  const std::string stem = "counties-" + std::to_string(copies);
  Sample sample{.map = SampleFile("us-counties.map"),
                .compiled = WorkFile(stem + ".mpc"),
                .data = SampleFile("us-counties.mdf"),
                .copies = copies};
  if (copies > 1) {
    sample.map = WorkFile(stem + ".map");
    sample.data = WorkFile(stem + ".mdf");
    WriteMap(sample.map, copies);
    WriteData(sample.data, copies);
  }
  Compile(sample);
  sample.areas = CountLines(ReadWholeFile(sample.map), kKey);
  sample.rows = CountLines(DataText(ReadWholeFile(sample.data)).rows, "");
  return sample;
}

}  // namespace

void SetWorkFolder(const fs::path& folder) { WorkFolder() = folder; }

fs::path WorkFile(const std::string& name) { return WorkFolder() / name; }

const Sample& GetSample(int copies) {
  static std::map<int, Sample> samples;
  const auto found = samples.find(copies);
  return found != samples.end() ? found->second
                                : samples.emplace(copies, MakeSample(copies)).first->second;
}

fs::path MakeLongDataFile(const Sample& sample, int rows) {
  const DataText data(ReadWholeFile(sample.data));
  std::string text = data.head + data.columns;
  for (int made = 0; made < rows; made += sample.rows) text += data.rows;
  const fs::path path = WorkFile("rows-" + std::to_string(rows) + ".mdf");
  WriteWholeFile(path, text);
  return path;
}

std::string ReadWholeFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  if (!file) throw std::runtime_error("cannot read " + path.filename().string());
  return std::move(text).str();
}

}  // namespace vexel
