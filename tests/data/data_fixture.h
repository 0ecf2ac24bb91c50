// What the tests of data files share: a map, a data set linked to it, and short ways to load and to
// look at them.

#ifndef VEXEL_TESTS_DATA_DATA_FIXTURE_H_
#define VEXEL_TESTS_DATA_DATA_FIXTURE_H_

#include "data/dataset.h"
#include "map/map_fixture.h"

namespace vexel::test {

class ProbeData : public CVELAData {
 public:
  using CVELAData::areas;
  using CVELAData::error;
  using CVELAData::mapIsText;
  using CVELAData::numDataLevels;
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

inline const std::string kHead =
    "[MapDataFile]|Version=Ortex 3.2|MapFile=m|AreaLevels=2|Variables=2|Thousands=Comma|"
    "Decimal=Dot|NoValue=N/A|MapLabel=~|";
inline const std::string kHeader = "[Data]|State;County;Area Name;Births;Deaths|";

// A folder with the map "m.map": region 12 "North" with district 12 3 "Upper".
class DataTest : public MapTest {
 protected:
  DataTest() {
    data.map = &map;
    map.data = &data;
    dir.Write("m.map", Lines("M|MapName=Land|L|Name=Region|Name=District|G|Name=North|"
                             "AreaStructure=12|P|0 0|9 0|9 9|U|Name=Upper|AreaStructure=12 3|P|"
                             "0 0|9 0|9 9|E"));
  }

  int Load(std::string_view text, int quiet = 0, int loadMap = 1) {
    dir.Write("d.mdf", Table(text));
    return data.Build(Path("d.mdf"), loadMap, quiet);
  }

  std::string NameOf(const CAreaStruct& key) {
    CMapOb* node = nullptr;
    return map.Find(key, node) == 0 ? "none" : std::string(node->GetName().View());
  }

  CVELAMap map;
  ProbeData data;
};

}  // namespace vexel::test

#endif  // VEXEL_TESTS_DATA_DATA_FIXTURE_H_
