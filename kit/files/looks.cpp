#include "kit/files/looks.h"

#include <vexel/platform/file.h>
#include <vexel/platform/string.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

namespace vexel {

namespace {

using namespace std::string_view_literals;

// Enough for the first lines of a text.
constexpr std::size_t kBeginning = 4096;

constexpr std::string_view kAsMap = "give it to compile, or a data file that names it to render";
constexpr std::string_view kAsData = "data files go to render";
constexpr std::string_view kSaveAsUtf8 = "save it as UTF-8";
constexpr std::string_view kFromTable = "vexel import --table makes a data file of it";
constexpr std::string_view kFromSpreadsheet =
    "save it as CSV, of which vexel import --table makes a data file";
constexpr std::string_view kFromShapes = "vexel import makes a map of it";
constexpr std::string_view kFromJson = "maps and data files are texts; docs/formats.md tells how";
constexpr std::string_view kUnpack = "unpack it";
constexpr std::string_view kNone = "maps and data files are texts";

struct Magic {
  std::string_view bytes;
  FileLooks looks;
};

// Bytes that begin a file of one kind and no other.
constexpr std::array kMagic{
    Magic{"\xFF\xFE"sv, {FileKind::utf16, "a text in UTF-16", kSaveAsUtf8}},
    Magic{"\xFE\xFF"sv, {FileKind::utf16, "a text in UTF-16", kSaveAsUtf8}},
    Magic{"PK\x03\x04"sv,
          {FileKind::spreadsheet, "a spreadsheet or another zip file", kFromSpreadsheet}},
    Magic{"\xD0\xCF\x11\xE0"sv, {FileKind::spreadsheet, "an old spreadsheet", kFromSpreadsheet}},
    Magic{"\x00\x00\x27\x0A"sv, {FileKind::geodata, "a shapefile", kFromShapes}},
    Magic{"SQLite format 3\0"sv,
          {FileKind::geodata, "a GeoPackage or other database", kFromShapes}},
    Magic{"fgb\x03"sv, {FileKind::geodata, "a FlatGeobuf", kFromShapes}},
    Magic{"\x1F\x8B"sv, {FileKind::archive, "a gzip file", kUnpack}},
    Magic{"GIF8"sv, {FileKind::picture, "a GIF picture", kNone}},
    Magic{"\x89PNG"sv, {FileKind::picture, "a PNG picture", kNone}},
    Magic{"%PDF"sv, {FileKind::picture, "a PDF document", kNone}},
    Magic{"Ortex 3.1\x1A"sv, {FileKind::compiledMap, "a compiled map", kAsMap}},
    Magic{"TAVO MPC1\x1A"sv, {FileKind::compiledMap, "a compiled map", kAsMap}},
};

std::string_view FirstLine(std::string_view& text) {
  const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
  const std::string_view line = TrimBlanks(text.substr(0, end));
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

// A text map may have anything before its heading.
FileLooks LooksOfLines(std::string_view text) {
  while (!text.empty()) {
    const std::string_view line = FirstLine(text);
    if (EqualNoCase(line, "[Map]")) return {FileKind::textMap, "a text map", kAsMap};
    if (EqualNoCase(line, "[MapDataFile]")) return {FileKind::dataFile, "a data file", kAsData};
  }
  return {};
}

FileLooks LooksOfText(std::string_view text) {
  const FileLooks ours = LooksOfLines(text);
  if (ours.kind != FileKind::unknown) return ours;
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  text.remove_prefix(first);
  if (text.front() == '{' || text.starts_with("[{") || text.starts_with("[\n")) {
    const bool isGeo = text.find("\"FeatureCollection\"") != std::string_view::npos ||
                       text.find("\"Feature\"") != std::string_view::npos;
    if (isGeo) return {FileKind::json, "GeoJSON", kFromShapes};
    if (text.find("\"Topology\"") != std::string_view::npos) {
      return {FileKind::json, "TopoJSON", kFromShapes};
    }
    return {FileKind::json, "JSON", kFromJson};
  }
  if (text.front() == '<') return {FileKind::markup, "XML or a web page", kNone};
  const std::string_view line = FirstLine(text);
  const bool isText = std::none_of(line.begin(), line.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' && c != '\t';
  });
  if (isText && line.find_first_of(",;\t") != std::string_view::npos) {
    return {FileKind::table, "a table of comma-separated or similar values", kFromTable};
  }
  return {};
}

}  // namespace

FileLooks LooksOf(std::string_view beginning) {
  const auto* magic = std::find_if(kMagic.begin(), kMagic.end(), [=](const Magic& each) {
    return beginning.starts_with(each.bytes);
  });
  if (magic != kMagic.end()) return magic->looks;
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (beginning.starts_with(kByteOrderMark)) beginning.remove_prefix(kByteOrderMark.size());
  return LooksOfText(beginning);
}

FileLooks LooksOfFile(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return {};  // a pipe would be emptied
  CFile file;
  if (file.Open(path.c_str(), CFile::modeRead) == 0) return {};
  std::string beginning(kBeginning, '\0');
  beginning.resize(file.Read(beginning.data(), beginning.size()));
  return LooksOf(beginning);
}

}  // namespace vexel
