#include <cmath>
#include <limits>
#include <numbers>

#include "map/map_fixture.h"

namespace {

using vexel::test::ToText;

class Projection : public testing::Test {
 protected:
  // Adds a node of one polygon, with the bound that reading would give it.
  CMapOb& Add(const std::vector<tagVELAPOINTF>& vertices) {
    auto* node = new CMapOb;
    CRectF& bound = node->GetBoundRectF();
    bound = {vertices[0].x, vertices[0].y, vertices[0].x, vertices[0].y};
    node->AddPoly(new CPolygon);
    for (const auto& [x, y] : vertices) {
      node->GetPoly(0)->AddPointF(x, y);
      bound = {std::min(bound.left, x), std::max(bound.top, y), std::max(bound.right, x),
               std::min(bound.bottom, y)};
    }
    map.AddChild(node);
    return *node;
  }

  void Normalize(bool longLat, const CRectF& frame) {
    map.longLat = longLat ? 1 : 0;
    map.SetBoundRectF(frame);
    map.NormalizeCoords();
  }

  // The integer points of a node: "1,2 3,4".
  std::string Points(int node) {
    std::ostringstream out;
    for (const CPoint& point : map.GetChild(node)->GetPoly(0)->GetPoints()) {
      out << (out.tellp() > 0 ? " " : "") << point.x << ',' << point.y;
    }
    return out.str();
  }

  vexel::test::ProbeMap map;
};

TEST_F(Projection, FramesMapToKnownUnits) {
  struct Case {
    bool longLat;
    CRectF frame;
    int right, bottom;  // of the working space
    double angle;
    const char* points;  // of the left corners and of three places on the way to the right
  };
  for (const Case& c : {
           Case{false,
                {-57.6F, 597, 957.1F, 3.4F},
                31999,
                -18720,
                0,
                "0,0 0,-18720 9599,-3744 22400,-18720 19200,-9360"},
           Case{
               false, {-2, 1e6F, 3, -1e6F}, 0, -32000, 0, "0,0 0,-32000 0,-6400 0,-32000 0,-16000"},
           Case{true,
                {-125, 49, -66, 24},
                32000,
                -16439,
                0.091877289,
                "4417,0 0,-13970 10950,-4385 22484,-16042 18800,-9027"},
           Case{true,
                {110, -10, 155, -45},
                32000,
                -25078,
                -0.054398492,
                "0,-1454 4331,-25078 9913,-4951 20689,-24187 18781,-12059"},
           Case{true,
                {-80, 35, -30, -55},
                21631,
                -31999,
                -0.022730492,
                "0,-409 2398,-31999 6657,-5733 14185,-31732 12741,-15855"},
           Case{true,
                {-180, 84, 180, 60},
                8054,
                -32000,
                0.896349609,
                "3142,0 0,20277 -5135,-9319 28487,-15352 13048,-18961"},
           Case{true,
                {-75, -17, -66, -56},
                7532,
                -32000,
                -0.014015192,
                "0,-87 1491,-31999 2376,-6282 4675,-31955 4370,-15976"},
           Case{true,
                {13.1F, 52.7F, 13.7F, 52.3F},
                29325,
                -31999,
                0.00124618621,
                "132,0 0,-31969 8840,-6419 20527,-31995 17581,-16013"},
       }) {
    const auto at = [&](float across, float down) {
      return tagVELAPOINTF{c.frame.left + (c.frame.right - c.frame.left) * across,
                           c.frame.top + (c.frame.bottom - c.frame.top) * down};
    };
    map.RemoveAllChildren();
    const CMapOb& node = Add({at(0, 0), at(0, 1), at(.3F, .2F), at(.7F, 1), at(.6F, .5F)});
    Normalize(c.longLat, c.frame);
    EXPECT_EQ(map.GetBoundRect(), (CRect{0, 0, c.right, c.bottom}));
    EXPECT_EQ(Points(0), c.points);
    EXPECT_EQ(node.GetAngle(), static_cast<float>(c.angle)) << c.frame.left;
  }
}

TEST_F(Projection, DegreesBoundANodeByItsPoints) {
  Add({{-125, 49}, {-125, 24}, {-95, 24}});
  for (const int node : {1, 2}) {
    map.AddChild(new CMapOb);
    map.GetChild(node)->SetBoundRect({1, 2, 3, 4});
  }
  map.GetChild(2)->AddPoly(new CPolygon);
  Normalize(true, {-125, 49, -66, 24});
  EXPECT_EQ(ToText(map.GetChild(0)->GetBoundRect()), "0 0 16275 -16439");
  EXPECT_EQ(ToText(map.GetChild(1)->GetBoundRect()), "1 2 3 4");
  EXPECT_EQ(ToText(map.GetChild(2)->GetBoundRect()), "99999 -99999 -99999 99999");
}

TEST_F(Projection, TheOperationForOnePointRoundsEachStep) {
  float x = -77.95F;  // a point at which leaving out any of the roundings shows
  float y = 34.36F;
  CMapOb::Conic(&x, &y, 0.6F, -1.6F, 1.4617F);
  EXPECT_EQ(x, 0x1.93b3f8p-3F);
  EXPECT_EQ(y, -0x1.72db0ep+0F);
}

TEST_F(Projection, AMapCentredOnTheEquatorKeepsItsProportions) {
  CMapOb& node = Add({{30, -20}, {0, 0}, {-30, 20}});
  Normalize(true, {-30, 20, 30, -20});
  const double height = 32000 * std::sin(std::numbers::pi / 9) / (std::numbers::pi / 6);
  for (int i = 0; i < 3; ++i) {
    EXPECT_NEAR(node.GetPoly(0)->GetPoint(i).x, 16000 * (2 - i), 300) << i;
    EXPECT_NEAR(node.GetPoly(0)->GetPoint(i).y, height / 2 * (i - 2), 300) << i;
  }
  EXPECT_NEAR(node.GetAngle(), 0, 0.01);
}

TEST_F(Projection, RotatedExtentTurnsTheNodesOwnPointsByTheAngleOfAnother) {
  const CMapOb& root = Add({{-125, 49}, {-95, 49}});
  CMapOb& node = Add({{-110, 40}, {-100, 30}});
  Normalize(true, {-125, 49, -66, 24});
  CRectF rect;
  node.GetRotatedRect(&root, &rect);
  EXPECT_EQ(ToText(rect), "10324.8672 -10693.0898 15462.4561 -5061.86914");
  map.GetRotatedRect(&root, &rect);  // the map has no points of its own
  EXPECT_EQ(ToText(rect), "3.40282347e+38 3.40282347e+38 -3.40282347e+38 -3.40282347e+38");
}

}  // namespace
