// What a file looks like from its first bytes, for those who gave the wrong one.

#ifndef VEXEL_KIT_FILES_LOOKS_H_
#define VEXEL_KIT_FILES_LOOKS_H_

#include <vexel/platform/export.h>

#include <string>
#include <string_view>

namespace vexel {

enum class FileKind {
  unknown,
  textMap,
  compiledMap,
  dataFile,
  utf16,
  json,  // GeoJSON and TopoJSON among them
  spreadsheet,
  geodata,  // a shapefile, a GeoPackage, a FlatGeobuf
  table,    // cells with commas, semicolons or tabs between
  markup,
  archive,
  picture,
};

struct FileLooks {
  FileKind kind = FileKind::unknown;
  std::string_view name;    // "a spreadsheet"; empty for an unknown kind
  std::string_view advice;  // what to do with it where a map or a data file is wanted
};

// Looks at the beginning of a text.
VEXEL_API FileLooks LooksOf(std::string_view beginning);

// Looks into a file; unknown for one that cannot be read.
VEXEL_API FileLooks LooksOfFile(const std::string& path);

}  // namespace vexel

#endif  // VEXEL_KIT_FILES_LOOKS_H_
