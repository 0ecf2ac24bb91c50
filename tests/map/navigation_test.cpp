#include "map/map_fixture.h"

namespace {

using vexel::test::IsSettled;
using vexel::test::Key;

class Navigation : public vexel::test::MapTest {
 protected:
  // Three levels below the map; key 2 is a leaf above the deepest level.
  Navigation() {
    for (const char* name : {"M", "1", "2", "3"}) map.AddLevelName(name);
    map.InsertArea("a", Key({1, 1, 1}));
    map.InsertArea("b", Key({1, 2, 1}));
    map.InsertArea("c", Key({2}));
  }

  CMapOb* At(std::initializer_list<std::int32_t> codes) { return map.GetArea(Key(codes)); }

  // The draw level after a zoom; 0 when the root or the marks do not fit it.
  int LevelAfterZoomTo(CMapOb* node) {
    const bool done = map.ZoomTo(node) == 1 && map.GetDrawRoot() == node;
    return done && IsSettled(map, map.GetDrawLevel()) ? map.GetDrawLevel() : 0;
  }

  vexel::test::ProbeMap map;
};

TEST_F(Navigation, ZoomingDrawsTheTablesLevelAtLeastTheNextAtMostTheDeepest) {
  EXPECT_EQ(LevelAfterZoomTo(At({1})), 2);
  EXPECT_EQ(LevelAfterZoomTo(At({1, 1, 1})), 3);
  EXPECT_EQ(LevelAfterZoomTo(At({2})), 2);
  EXPECT_FALSE(At({2})->IsDrawn());
  EXPECT_EQ(LevelAfterZoomTo(&map), 1);
  map.zoomDrawLevels = {3, 1, 9, 0};
  EXPECT_EQ(LevelAfterZoomTo(&map), 3);
  EXPECT_EQ(LevelAfterZoomTo(At({1})), 2);
  EXPECT_EQ(LevelAfterZoomTo(At({1, 1})), 3);
  EXPECT_EQ(map.ZoomTo(nullptr), 0);
  EXPECT_EQ(map.GetDrawRoot(), At({1, 1}));
  At({2})->SetLevel(-1);
  EXPECT_EQ(map.ZoomTo(At({1})->GetParent()->GetChild(1)), 1);
  EXPECT_EQ(map.GetDrawLevel(), 0);
  map.InitLevels(0);
  for (const int levels : {0, std::numeric_limits<int>::min()}) {
    map.SetNumMapLevels(levels);
    EXPECT_EQ(LevelAfterZoomTo(&map), -1);
  }
}

TEST_F(Navigation, ZoomingOutUndoesZoomingInUpToTheMap) {
  for (CMapOb* node : {At({1}), At({1, 1}), At({1, 1, 1})}) {
    const int before = LevelAfterZoomTo(node->GetParent());
    LevelAfterZoomTo(node);
    EXPECT_EQ(map.ZoomOut(), 1);
    EXPECT_EQ(map.GetDrawRoot(), node->GetParent());
    EXPECT_TRUE(IsSettled(map, before));
  }
  map.ZoomTo(&map);
  map.PrepareLevelDrawing(3);
  EXPECT_TRUE(IsSettled(map, 3));
  EXPECT_EQ(map.ZoomOut(), 0);
  EXPECT_EQ(map.GetDrawRoot(), &map);
  EXPECT_EQ(map.GetDrawLevel(), 1);
  map.SetDrawLevel(3);
  EXPECT_TRUE(IsSettled(map, 1));
}

TEST_F(Navigation, NodesWithoutPolygonsGetTheGivenBoundAndTheUserAWarning) {
  const CRect rect{0, 0, 7, -7};
  At({1})->AddPoly(new CPolygon);
  At({2})->AddPoly(new CPolygon);
  EXPECT_EQ(map.CheckForMissingPolygons(rect), 1);
  EXPECT_EQ(TakeBoxes(),
            "0 WARNING:  .MAP file has GeoGroup(s) and/or GeoUnit(s) with no polygons\n");
  EXPECT_EQ(map.GetBoundRect(Key({1})), CRect());
  EXPECT_EQ(map.GetBoundRect(Key({1, 2, 1})), rect);
  EXPECT_EQ(map.GetBoundRect(Key({2})), CRect());
  EXPECT_EQ(&map.GetBoundRect(Key({5})), &map.GetBoundRect());
  EXPECT_EQ(map.GetBoundRect(), CRect());
  map.RemoveAllChildren();
  EXPECT_EQ(map.CheckForMissingPolygons(rect), 0);
  EXPECT_EQ(TakeBoxes(), "");
}

}  // namespace
