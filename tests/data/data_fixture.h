// What the tests of data files share: a map, a data set linked to it, and short ways to load and to
// look at them.

#ifndef VEXEL_TESTS_DATA_DATA_FIXTURE_H_
#define VEXEL_TESTS_DATA_DATA_FIXTURE_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "data/dataset.h"
#include "map/map.h"
#include "support/files.h"
#include "support/recording_host.h"

namespace vexel::test {

class ProbeData : public CVELAData {
 public:
  using CVELAData::areas;
  using CVELAData::error;
  using CVELAData::mapIsText;
  using CVELAData::oldVersion;
  using CVELAData::varDecs;
  using CVELAData::varNames;
};

// Lines written as "one|two", cells as "1;X;3".
inline std::string Table(std::string_view joined) {
  std::string text(joined);
  std::replace(text.begin(), text.end(), '|', '\n');
  std::replace(text.begin(), text.end(), ';', '\t');
  return text + '\n';
}

inline CAreaStruct Key(std::initializer_list<std::int32_t> codes) {
  CAreaStruct key;
  std::copy(codes.begin(), codes.end(), key.codes.begin());
  return key;
}

inline const std::string kHead =
    "[MapDataFile]|Version=Ortex "
    "3.2|MapFile=m|AreaLevels=2|Variables=2|Thousands=Comma|Decimal=Dot|"
    "NoValue=N/A|MapLabel=~|";
inline const std::string kHeader = "[Data]|State;County;Area Name;Births;Deaths|";

// A folder with the map "m.map": region 12 "North" with district 12 3 "Upper".
class DataTest : public testing::Test {
 protected:
  DataTest() {
    data.map = &map;
    map.data = &data;
    dir.Write("m.map",
              Table("[Map]|MapName=Land|[AreaLevels]|Name=Region|Name=District|[GeoGroup]|"
                    "Name=North|AreaStructure=12|[Polygon]|0 0|9 0|9 9|[GeoUnit]|Name=Upper|"
                    "AreaStructure=12 3|[Polygon]|0 0|9 0|9 9"));
  }

  int Load(std::string_view text, int quiet = 0, int loadMap = 1) {
    dir.Write("d.mdf", Table(text));
    return data.Build(dir.Path("d.mdf").c_str(), loadMap, quiet);
  }

  // The boxes since the last call, flags and text, one behind the other.
  std::string TakeBoxes() {
    std::string text;
    for (const auto& box : host.boxes) text += std::to_string(box.flags) + ' ' + box.text + '\n';
    host.boxes.clear();
    return text;
  }

  std::string NameOf(const CAreaStruct& key) {
    CMapOb* node = nullptr;
    return map.Find(key, node) == 0 ? "none" : std::string(node->GetName().View());
  }

  RecordingHost host;
  TempDir dir;
  CVELAMap map;
  ProbeData data;
};

}  // namespace vexel::test

#endif  // VEXEL_TESTS_DATA_DATA_FIXTURE_H_
