#include <cmath>
#include <numbers>
#include <random>

#include "map/map_fixture.h"

namespace {

using vexel::test::ToText;
using Real = long double;
using Vertices = std::vector<tagVELAPOINTF>;

class Projection : public testing::Test {
 protected:
  // Adds a node of one polygon, with the bound that reading would give it.
  CMapOb& Add(const Vertices& vertices) {
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

// The formulas once more, in long double, with a float wherever a value is to be one.
struct Formulas {
  static constexpr Real k = 0.017453292F;
  static constexpr Real half = 0.008726646F;
  static Real F(Real value) { return static_cast<float>(value); }

  Formulas(bool conic, const CRectF& f) : longLat(conic) {
    const Real l = f.left, r = f.right, t = f.top, b = f.bottom;
    Real w = r - l, h = F(t - b);
    x0 = l;
    y0 = t;
    if (longLat) {
      refLat = F((t + b) * half);
      refLong = F(F(r + l) * half);
      cone = F(std::cos(refLat) / std::sin(refLat));
      const Real tl = F(Theta(l)), tr = F(Theta(r)), m = F(std::cos(Theta(F(r + l) * 0.5L)));
      const Real rt = Radius(t), rb = Radius(b), cl = std::cos(tl), cr = std::cos(tr);
      x0 = F(std::min(rt * std::sin(tl), rb * std::sin(tl)));
      y0 = F(std::max({-rt * cl, -rt * m, -rt * cr}));
      w = F(F(std::max(rt * std::sin(tr), rb * std::sin(tr))) - x0);
      h = y0 - F(std::min({-rb * cl, -rb * m, -rb * cr}));
    }
    scale = F(32000 / std::max(w, h));
    bound = {0, 0, static_cast<int>(w * scale), static_cast<int>((longLat ? -h : b - t) * scale)};
  }

  Real Theta(Real lon) const { return (lon * k - refLong) * std::sin(refLat); }
  Real Radius(Real lat) const { return F(cone - std::sin(lat * k - refLat)); }

  CPoint At(Real x, Real y) const {
    const Real px = longLat ? Radius(y) * std::sin(Theta(x)) : x;
    const Real py = longLat ? -Radius(y) * std::cos(Theta(x)) : y;
    return {static_cast<int>((px - x0) * scale), static_cast<int>((py - y0) * scale)};
  }

  Real Angle(const CRectF& b) const {
    const Real p = F(Theta(b.left)), q = F(Theta(b.right));
    return longLat ? -std::atan((std::cos(p) - std::cos(q)) / (std::sin(q) - std::sin(p))) : 0;
  }

  bool longLat;
  Real refLat = 0, refLong = 0, cone = 0, scale = 0, x0 = 0, y0 = 0;
  CRect bound;
};

struct Frame {
  const char* name;
  bool longLat;
  float left, top, right, bottom;
};

class ProjectionOfFrames : public Projection, public testing::WithParamInterface<Frame> {};

TEST_P(ProjectionOfFrames, AgreesWithTheFormulas) {
  const auto& [name, longLat, left, top, right, bottom] = GetParam();
  const CRectF frame(left, top, right, bottom);
  std::mt19937 random(20261124);
  for (int i = 0; i < 40; ++i) {
    Vertices vertices(25);
    for (auto& [x, y] : vertices) {
      x = std::uniform_real_distribution(frame.left, frame.right)(random);
      y = std::uniform_real_distribution(frame.bottom, frame.top)(random);
    }
    Add(vertices);
  }
  Normalize(longLat, frame);
  const Formulas formulas(longLat, frame);
  EXPECT_EQ(ToText(map.GetBoundRect()), ToText(formulas.bound));
  int exact = 0;
  for (int n = 0; n < 40; ++n) {
    const CMapOb& node = *map.GetChild(n);
    for (int i = 0; i < 25; ++i) {
      const tagVELAPOINTF from = node.GetPoly(0)->GetPointF(i);
      const CPoint point = node.GetPoly(0)->GetPoints()[static_cast<std::size_t>(i)];
      const CPoint expected = formulas.At(from.x, from.y);
      EXPECT_NEAR(point.x, expected.x, 1);
      EXPECT_NEAR(point.y, expected.y, 1);
      exact += point == expected ? 1 : 0;
    }
    EXPECT_NEAR(node.GetAngle(), static_cast<double>(formulas.Angle(node.GetBoundRectF())), 1e-6);
  }
  EXPECT_GE(exact, 990);
}

constexpr Frame kFrames[] = {{"Wide", false, -57.6F, 597, 957.1F, 3.4F},
                             {"High", false, -2, 1e6F, 3, -1e6F},
                             {"Square", false, 10, 20, 20, 10},
                             {"Tiny", false, 5, 5.001F, 5.0015F, 5},
                             {"North", true, -125, 49, -66, 24},
                             {"South", true, 110, -10, 155, -45},
                             {"AcrossTheEquator", true, -80, 35, -30, -55},
                             {"Polar", true, -180, 84, 180, 60},
                             {"HighAndNarrow", true, -75, -17, -66, -56},
                             {"Town", true, 13.1F, 52.7F, 13.7F, 52.3F}};

INSTANTIATE_TEST_SUITE_P(Frames, ProjectionOfFrames, testing::ValuesIn(kFrames),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(Projection, PlainUnitsMapExactly) {
  // What lies west or north of the frame is not clamped; fractions go toward zero.
  Add({{-8, 3}, {56, 35}, {0, 3.001F}, {-9, 36}, {-8.0001F, 35.0001F}});
  map.AddChild(new CMapOb);
  map.GetChild(1)->SetBoundRectF({0, 11, 8, 3});
  Normalize(false, {-8, 35, 56, 3});
  EXPECT_EQ(ToText(map.GetBoundRect()), "0 0 32000 -16000");
  EXPECT_EQ(Points(0), "0,-16000 32000,0 4000,-15999 -500,500 0,0");
  EXPECT_EQ(ToText(map.GetChild(0)->GetBoundRect()), "-500 500 32000 -16000");
  EXPECT_EQ(ToText(map.GetChild(1)->GetBoundRect()), "4000 -12000 8000 -16000");
  // A further time appends, in the frame of the draw root.
  map.ZoomTo(map.GetChild(1));
  Normalize(false, {0, 1, 1, 0});
  EXPECT_EQ(map.GetChild(0)->GetPoly(0)->GetSize(), 10);
  EXPECT_EQ(ToText(map.GetChild(1)->GetBoundRect()), "0 0 32000 -32000");
}

TEST_F(Projection, DegreesMapToKnownUnits) {
  Add({{-125, 49}, {-125, 24}, {-95.5F, 24}, {-95, 24}});
  Add({{-66, 49}, {-66, 24}, {-80, 40}});
  map.AddChild(new CMapOb);
  map.AddChild(new CMapOb);
  map.GetChild(3)->AddPoly(new CPolygon);
  Normalize(true, {-125, 49, -66, 24});
  EXPECT_EQ(ToText(map.GetBoundRect()), "0 0 32000 -16439");
  EXPECT_EQ(Points(0), "4417,0 0,-13970 16000,-16439 16275,-16439");
  EXPECT_EQ(Points(1), "27582,0 32000,-13970 22997,-6483");
  EXPECT_EQ(ToText(map.GetChild(0)->GetBoundRect()), "0 0 16275 -16439");
  EXPECT_FLOAT_EQ(map.GetChild(0)->GetAngle(), 0.15053344F);
  EXPECT_EQ(map.GetAngle(), 0);
  EXPECT_EQ(ToText(map.GetChild(2)->GetBoundRect()), "0 0 0 0");
  EXPECT_EQ(ToText(map.GetChild(3)->GetBoundRect()), "99999 -99999 -99999 99999");
}

TEST_F(Projection, TheOperationForOnePointRoundsEachStep) {
  float x = -77.95F;  // a point at which leaving out any of the roundings shows
  float y = 34.36F;
  CMapOb::Conic(&x, &y, 0.6F, -1.6F, 1.4617F);
  EXPECT_EQ(x, 0x1.93b3f8p-3F);
  EXPECT_EQ(y, -0x1.72db0ep+0F);
}

TEST_F(Projection, AMapCentredOnTheEquatorKeepsItsProportions) {
  const CMapOb& node = Add({{-30, 20}, {30, -20}, {0, 0}, {15, 10}});
  Normalize(true, {-30, 20, 30, -20});
  constexpr double kRight = 32000;
  const double bottom = -kRight * std::sin(std::numbers::pi / 9) / (std::numbers::pi / 6);
  EXPECT_NEAR(map.GetBoundRect().bottom, bottom, 300);
  const CPoint expected[] = {{0, 0},
                             {32000, static_cast<int>(bottom)},
                             {16000, static_cast<int>(bottom / 2)},
                             {24000, static_cast<int>(bottom * (1 - 0.5077) / 2)}};
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    EXPECT_NEAR(node.GetPoly(0)->GetPoints()[i].x, expected[i].x, 300) << i;
    EXPECT_NEAR(node.GetPoly(0)->GetPoints()[i].y, expected[i].y, 300) << i;
  }
  EXPECT_NEAR(node.GetAngle(), 0, 0.01);
}

TEST_F(Projection, FramesWithoutExtentScaleByZeroAndNoFrameGivesMoreThanIntsHold) {
  constexpr float kMost = std::numeric_limits<float>::max();
  for (const bool longLat : {false, true}) {
    for (const CRectF& frame :
         {CRectF(7, 7, 7, 7), CRectF(0, 0, 0, 0), CRectF(7, 8, 7, 7), CRectF(0, 180, 0, 180),
          CRectF(-kMost, kMost, kMost, -kMost), CRectF(kMost, -kMost, -kMost, kMost),
          CRectF(0, 1e-45F, 1e-45F, 0)}) {
      map.RemoveAllChildren();
      const CMapOb& node = Add({{frame.left, frame.top}, {frame.right, frame.bottom}});
      Normalize(longLat, frame);
      EXPECT_TRUE(std::isfinite(node.GetAngle()));
      if (frame.left != frame.right || frame.top != frame.bottom) continue;
      EXPECT_EQ(Points(0), "0,0 0,0");
      EXPECT_EQ(ToText(map.GetBoundRect()), "0 0 0 0");
      EXPECT_EQ(node.GetAngle(), 0);
    }
  }
}

TEST_F(Projection, RotatedExtentTurnsTheNodesOwnPointsByTheAngleOfAnother) {
  const CMapOb& root = Add({{-125, 49}, {-95, 49}});
  const CMapOb& node = Add({{-110, 40}, {-100, 30}});
  Normalize(true, {-125, 49, -66, 24});
  const double s = std::sin(double{root.GetAngle()});
  const double c = std::cos(double{root.GetAngle()});
  const CPoint a = node.GetPoly(0)->GetPoints()[0];
  const CPoint b = node.GetPoly(0)->GetPoints()[1];
  CRectF rect;
  node.GetRotatedRect(&root, &rect);
  EXPECT_NEAR(rect.left, a.x * c - a.y * s, 0.01);
  EXPECT_NEAR(rect.right, b.x * c - b.y * s, 0.01);
  EXPECT_NEAR(rect.top, b.x * s + b.y * c, 0.01);
  EXPECT_NEAR(rect.bottom, a.x * s + a.y * c, 0.01);
  root.GetRotatedRect(&root, &rect);  // its upper side lies level now
  EXPECT_NEAR(rect.top, rect.bottom, 2);
  map.GetRotatedRect(&root, &rect);  // the map has no points of its own
  EXPECT_EQ(ToText(rect), "3.40282347e+38 3.40282347e+38 -3.40282347e+38 -3.40282347e+38");
}

}  // namespace
