#include "map/map_fixture.h"

namespace {

using vexel::test::Key;
using vexel::test::Lines;
using vexel::test::ProbeMap;
using vexel::test::Shape;
using vexel::test::ToText;

class TextReader : public vexel::test::MapTest {
 protected:
  // What the reader said, without the warning of the load that areas have no polygons.
  std::string TakeReaderBoxes() {
    std::erase_if(host.boxes, [](const auto& box) { return box.text.starts_with("WARNING"); });
    return TakeBoxes();
  }
};

struct Case {
  const char* name;
  const char* lines;  // behind "[Map]" and "MapName=M", so they begin at line 3
  int result;
  const char* shape;
  const char* boxes = "";
};

class WhereReadingStops : public TextReader, public testing::WithParamInterface<Case> {};

TEST_P(WhereReadingStops, GivesTheResultTheTreeAndTheMessages) {
  ProbeMap map;
  EXPECT_EQ(Load(map, Lines(std::string("M|MapName=M|") + GetParam().lines)), GetParam().result);
  EXPECT_EQ(Shape(map), GetParam().shape);
  EXPECT_EQ(TakeReaderBoxes(), GetParam().boxes);
}

constexpr Case kCases[] = {
    {"NothingBehindTheName", "", 1, "M"},
    {"LeafEndsAtLeafAndGroup", "U|Name=A|U|Name=B|G|Name=C", 1, "M{A B C}"},
    {"EndEndsLeafAndGroup", "G|Name=G|U|Name=A|E|U|Name=B", 1, "M{G{A} B}"},
    {"GroupNeedsNoEnd", "G|Name=G|G|Name=H|U|Name=A", 1, "M{G{H{A}}}"},
    {"EndOfTheRootLeadsBackToTheMap", "U|Name=A|E|Name=B|U|Name=C", 1, "M{A C}",
     "0 Error at line 6\nName\n"},
    {"AnyLetterCase", "[geounit]|NAME=A|areastructure=1|[POLYGON]|1 2|G|name=B|[ENDgroup]", 1,
     "M{A B}"},
    {"LastOfTwoNamesStays", "U|Name=A|Name=B", 1, "M{B}"},
    {"UnknownKeyword", "U|Colour=3|Name=A", 1, "M{A}", "0 Error at line 4\nColour\n"},
    {"CoordinatesOutsideAPolygon", "U||1 2|Name=A", 1, "M{A}", "0 Error at line 5\n1 2\n"},
    {"UnknownHeadingEndsTheNode", "G|Name=G|[Other]|Name=X|junk|U|Name=A", 1, "M{G A}",
     "0 Error at line 5\n[Other]\n"},
    {"UnknownHeadingOfTheMapIsNotSkipped", "[Other]|Key=1|some words|U|Name=A", 1, "M{A}",
     "0 Error at line 3\n[Other]\n0 Error at line 4\nKey\n0 Error at line 5\nsome words\n"},
    {"BadKeyLosesTheGroup", "U|Name=A|G|Name=G|U|Name=B|U|AreaStructure=1 x", 0, "M{A}",
     "0 Bad area structure at line 10\nAreaStructure\n"},
    {"FractionInKey", "U|AreaStructure=1.5", 0, "M",
     "0 Bad area structure at line 4\nAreaStructure\n"},
    {"NineCodes", "U|AreaStructure=1 2 3 4 5 6 7 8 9", 0, "M",
     "0 Bad area structure at line 4\nAreaStructure\n"},
    {"CommaBetweenCoordinates", "U|P|1 2 9|3,4", 0, "M", "0 Bad coordinates at line 6\n"},
    {"OneCoordinate", "U|Name=A|E|U|P|1 2|7", 0, "M{A}", "0 Bad coordinates at line 9\n"},
    {"HoleInSmallLetters", "U|P|hole=Yes", 0, "M", "0 Bad coordinates at line 5\n"},
    {"CommandsInLevels", "L|Nme=X|words|Name=L|U|Name=A", 1, "M{A}",
     "0 Unrecognized command at line 4:\nNme\n0 Unrecognized command at line 5:\nwords\n"},
    {"HeadingInLevels", "L|Name=L|[Odd]|Name=L2|U|Name=A", 1, "M{A}",
     "0 Invalid section heading at line 5:\n[Odd]\n"},
    {"NinthLevelName", "L|Name=1|Name=2|Name=3|Name=4|Name=5|Name=6|Name=7|Name=8|MapName=9", 1,
     "M",
     "0 Unrecognized command at line 11:\nName\n0 Unrecognized command at line 12:\nMapName\n"},
    {"NinthNameOfTheMap",
     "MapName=|MapName=|MapName=|MapName=|MapName=|MapName=|MapName=8|MapName=9", 1, "8",
     "0 Error at line 10\nMapName\n"}};

INSTANTIATE_TEST_SUITE_P(Table, WhereReadingStops, testing::ValuesIn(kCases),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(TextReader, NeedsTheNameOfTheMapOrOfALevelBeforeTheFirstArea) {
  ProbeMap map;
  EXPECT_EQ(Load(map, Lines("M|Version=7|U|Name=A")), 0);
  EXPECT_EQ(TakeBoxes(), "0 No AreaLevels in map file\n");
  EXPECT_EQ(Load(map, Lines("M|L|Name=L|U|P|0 0")), 1);
  EXPECT_EQ(map.GetNumMapLevels(), 1);
}

TEST_F(TextReader, TakesNamesKeysAndHoles) {
  ProbeMap map;
  EXPECT_EQ(Load(map, Lines("M|MapName=The \"M\" = map|LongLat=YES|LongLat=No|L|Name=L|U|"
                            "AreaStructure=1, 2 3|AreaStructure=-4|Name=  Doña = Ana |"
                            "P|Hole=No|  0.5 -2e1  9|+1 nonsense|P|1 1")),
            1);
  EXPECT_EQ(map.GetLevelName(0), "The \"M\" = map");
  EXPECT_EQ(map.GetLevelName(1), "L");
  EXPECT_EQ(Shape(map), "The \"M\" = map{Doña = Ana}");
  EXPECT_EQ(map.longLat, 1);
  CMapOb& node = *map.GetChild(0);
  EXPECT_EQ(node.GetArea(), Key({-4, 2, 3}));
  EXPECT_EQ(node.GetPoly(0)->IsHole(), 1);
  EXPECT_EQ(node.GetPoly(1)->IsHole(), 0);
  EXPECT_EQ(node.GetPoly(0)->GetPointF(0).x, 0.5F);
  EXPECT_EQ(node.GetPoly(0)->GetPointF(0).y, -20);
  EXPECT_EQ(node.GetPoly(0)->GetPointF(1).y, 0);
}

TEST_F(TextReader, BoundsCoverANodesOwnPolygonsWithTheLargestYInTop) {
  ProbeMap map;
  const std::string tree = "M|MapName=M|G|U|P|1 5|3 2|P|7 -1|2 0|P|4 9|4 9|U|P|E|E";
  EXPECT_EQ(Load(map, Lines(tree)), 1);
  const CMapOb& group = *map.GetChild(0);
  EXPECT_TRUE(group.GetBoundRectF().IsRectNull());
  EXPECT_EQ(ToText(group.GetChild(0)->GetBoundRectF()), "1 9 7 -1");
  EXPECT_EQ(ToText(map.GetBoundRectF()), "1 9 7 -1");
  EXPECT_EQ(ToText(map.fileBoundsF), "1 -1 7 9");
  // A polygon without vertices leaves the bound inside out.
  EXPECT_EQ(ToText(group.GetChild(1)->GetBoundRectF()),
            "3.40282347e+38 -3.40282347e+38 -3.40282347e+38 3.40282347e+38");
  // A failure leaves the bound of the map, and a further tree replaces it.
  ProbeMap broken;
  EXPECT_EQ(Load(broken, Lines(tree + "|LongLat=Yes|U|P|8 8|9 9|bad")), 0);
  EXPECT_EQ(broken.GetNumChildren(), 1);
  EXPECT_EQ(ToText(broken.GetBoundRectF()), "1 9 7 -1");
  EXPECT_EQ(broken.longLat, 1);
  ProbeMap ownPolygon;
  EXPECT_EQ(Load(ownPolygon, Lines("M|MapName=M|G|E|P|8 8|9 9|bad")), 0);
  EXPECT_TRUE(ownPolygon.GetBoundRectF().IsRectNull());
  ProbeMap further;
  EXPECT_EQ(Load(further, Lines(tree + "|U|P|8 8|9 9")), 1);
  EXPECT_EQ(ToText(further.GetBoundRectF()), "8 9 9 8");
}

TEST_F(TextReader, RefusesGroupsNestedBeyond64) {
  const auto nested = [](int groups) {
    std::string lines = "M|MapName=M";
    for (int i = 0; i < groups; ++i) lines += "|G";
    return Lines(lines + "|U|P|1 1");
  };
  ProbeMap map;
  EXPECT_EQ(Load(map, nested(64)), 1);
  int nodes = 0;
  map.Count(nodes);
  EXPECT_EQ(nodes, 66);
  for (const int groups : {65, 100000}) {
    ProbeMap tooDeep;
    TakeBoxes();
    EXPECT_EQ(Load(tooDeep, nested(groups)), 0);
    EXPECT_EQ(TakeBoxes(), "0 Groups nested too deeply at line 67\n");
    EXPECT_EQ(tooDeep.GetNumChildren(), 0);
  }
}

TEST_F(TextReader, TellsProgressAtHeadingsOfTheMapAndEveryFifthPoint) {
  const auto positions = [&](int points, std::size_t nameLength) {
    std::string lines = "M|MapName=" + std::string(nameLength, 'x') + "|U|P";
    for (int i = 0; i < points; ++i) lines += "|1 1";
    ProbeMap map;
    host.positions.clear();
    EXPECT_EQ(Load(map, Lines(lines), 1), 1);
    return host.positions;
  };
  EXPECT_EQ(positions(4, 0), (std::vector<int>{0, 0}));
  EXPECT_EQ(positions(12, 2970), (std::vector<int>{2, 3, 3, 3}));
}

}  // namespace
