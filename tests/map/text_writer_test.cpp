#include "brindle/progress.h"
#include "map/map_fixture.h"

namespace {

using vexel::test::Lines;
using vexel::test::ProbeMap;

class TextWriter : public vexel::test::MapTest {};

TEST_F(TextWriter, PutsOutlinesBeforeHolesAndFourDecimals) {
  ProbeMap map;
  ASSERT_EQ(Load(map, Lines("M|MapName= \"M\"=m |LongLat=Yes|L|Name=State|Name=|U|Name=C|"
                            "AreaStructure=3|P|Hole=Yes|1 1|P|0.12345 -0.00001|-120.5 7e20|G|P|1 1|"
                            "U|AreaStructure=-5,7|P|E|P|9 9")),
            1);
  map.GetChild(1)->SetName("\tDoña\tAna\n");
  CProgressDlg progress(0);
  progress.Create(nullptr);
  map.SaveMap(Path("out.map"), &progress);
  EXPECT_EQ(dir.Read("out.map"),
            Lines("M|Version=Ortex 3.2|MapName=\"M\"=m|LongLat=No||L|Name=State|Name=||U|Name=C|"
                  "AreaStructure=3||P|0.1235 -0.0000|-120.5000 699999978844242051072.0000||P|"
                  "Hole=Yes|1.0000 1.0000||G|Name= Doña Ana |AreaStructure=||P|1.0000 1.0000||U|"
                  "Name=|AreaStructure=-5, 7||P||E"));
  // Once for each node below the map; the map's own polygon is not written.
  EXPECT_EQ(host.positions, (std::vector<int>{1, 2, 3}));
}

TEST_F(TextWriter, HoldsTheLargestFloatsAndPolygonsWithIntegersAlone) {
  CVELAMap map;
  map.AddChild(new CMapOb);
  map.GetChild(0)->AddPoly(new CPolygon);
  map.GetChild(0)->AddPoly(new CPolygon);
  map.GetChild(0)->GetPoly(0)->AddPoint(1, 1);
  map.GetChild(0)->GetPoly(1)->AddPointF(-3.4028235e38F, -3.4028235e38F);
  map.SaveMap(Path("out.map"), nullptr);
  const std::string number = "-340282346638528859811704183484516925440.0000";
  EXPECT_TRUE(dir.Read("out.map").ends_with(Lines("P||P|" + number + ' ' + number)));
}

}  // namespace
