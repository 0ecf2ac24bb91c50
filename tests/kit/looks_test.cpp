// What a file is told to be by those who wanted a map or a data file.

#include "kit/files/looks.h"

#include <gtest/gtest.h>

namespace vexel::test {
namespace {

struct Look {
  std::string_view beginning;
  FileKind kind;
  std::string_view name;
};

TEST(Looks, AreKnownByTheBeginning) {
  constexpr Look kLooks[] = {
      {"Made by hand\r\n [MAP] \r\n", FileKind::textMap, "a text map"},
      {"\xEF\xBB\xBF[MapDataFile]\n", FileKind::dataFile, "a data file"},
      {"TAVO MPC1\x1A", FileKind::compiledMap, "a compiled map"},
      {"\n {\"type\": \"FeatureCollection\"", FileKind::json, "GeoJSON"},
      {"[{\"type\": \"Feature\"", FileKind::json, "GeoJSON"},
      {"{\"type\": \"Topology\"", FileKind::json, "TopoJSON"},
      {"[\n1", FileKind::json, "JSON"},
      {"<kml>", FileKind::markup, "XML or a web page"},
      {"State;Births\n1;2\n", FileKind::table, "a table of comma-separated or similar values"},
      {"State\tBirths\n1\t2\n", FileKind::table, "a table of comma-separated or similar values"},
      {"\x02,;\n", FileKind::unknown, ""},
      {"One word\nand, another\n", FileKind::unknown, ""},
      {" \r\n\t", FileKind::unknown, ""},
  };
  for (const Look& look : kLooks) {
    const FileLooks found = LooksOf(look.beginning);
    EXPECT_EQ(found.kind, look.kind) << look.beginning;
    EXPECT_EQ(found.name, look.name) << look.beginning;
    EXPECT_EQ(found.advice.empty(), look.name.empty()) << look.beginning;
  }
}

}  // namespace
}  // namespace vexel::test
