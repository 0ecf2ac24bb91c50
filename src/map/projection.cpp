// From map units to the integer working space.
//
// Degrees go through a simple conic projection: the cone touches the unit sphere at the latitude
// refLat, a parallel at latitude y becomes an arc of radius cot(refLat) - sin(y - refLat), and a
// meridian at longitude x a ray at the angle (x - refLong) * sin(refLat).
//
// Where a value is narrowed to a float on the way, it is so on purpose: compiled maps hold the
// integers that come out, and a last bit kept here would move some of them by one.

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "map/map.h"
#include "messages/remarks.h"
#include "platform/host.h"
#include "platform/number.h"

namespace {

using vexel::Cone;
using vexel::NarrowToFloat;
using vexel::TruncateToInt;

constexpr float kFrameSize = 32000.0F;
constexpr float kRadiansPerDegree = 0.017453292F;
constexpr float kHalfRadiansPerDegree = 0.008726646F;
constexpr int kLimit = 99999;  // beyond every coordinate of the working space

// The latitude at which the cone of a map centred on the equator touches the sphere, in radians. A
// cone that touches at the equator itself has its tip at infinity; this one is near enough for the
// eye and far enough for the precision of floats.
constexpr float kLeastRefLat = 0.01F;

// Units of the working space for one unit of a frame; 0 for a frame without extent.
float ScaleFor(double width, double height) {
  const double longer = std::max(width, height);
  return longer > 0.0 ? NarrowToFloat(kFrameSize / longer) : 0.0F;
}

// A cone with what it gives for each point worked out once.
class Projector {
 public:
  explicit Projector(const Cone& cone)
      : cone_(cone), sinRefLat_(std::sin(static_cast<double>(cone.refLat))) {}

  // The angle of a meridian, from degrees of longitude.
  double Theta(double lonDegrees) const {
    return (lonDegrees * kRadiansPerDegree - cone_.refLong) * sinRefLat_;
  }

  // The radius of a parallel, from degrees of latitude.
  float Radius(double latDegrees) const {
    return NarrowToFloat(cone_.coneConst - std::sin(latDegrees * kRadiansPerDegree - cone_.refLat));
  }

 private:
  Cone cone_;
  double sinRefLat_;
};

Cone ConeFor(const CRectF& frame, float lonSum) {
  Cone cone;
  cone.refLat = NarrowToFloat((double{frame.top} + frame.bottom) * kHalfRadiansPerDegree);
  if (cone.refLat == 0.0F) cone.refLat = kLeastRefLat;
  cone.refLong = NarrowToFloat(double{lonSum} * kHalfRadiansPerDegree);
  const double refLat = cone.refLat;
  cone.coneConst = NarrowToFloat(std::cos(refLat) / std::sin(refLat));
  return cone;
}

// The bound of a frame of degrees in the plane, largest y in `top`. Its upper and lower sides are
// arcs, so their middles count as well as their ends.
CRectF ProjectedFrame(const CRectF& frame, float lonSum, const Projector& projector) {
  const double thetaL = NarrowToFloat(projector.Theta(frame.left));
  const double thetaR = NarrowToFloat(projector.Theta(frame.right));
  const double cosM = NarrowToFloat(std::cos(projector.Theta(double{lonSum} * 0.5)));
  const double top = projector.Radius(frame.top);
  const double bottom = projector.Radius(frame.bottom);
  const double cosL = std::cos(thetaL);
  const double cosR = std::cos(thetaR);
  return {NarrowToFloat(std::min(top * std::sin(thetaL), bottom * std::sin(thetaL))),
          NarrowToFloat(std::max({-top * cosL, -top * cosM, -top * cosR})),
          NarrowToFloat(std::max(top * std::sin(thetaR), bottom * std::sin(thetaR))),
          NarrowToFloat(std::min({-bottom * cosL, -bottom * cosM, -bottom * cosR}))};
}

// The angle that turns a node upright: the slope of its upper side in the plane, reversed.
float UprightAngle(const CRectF& bound, const Projector& projector) {
  const double p = NarrowToFloat(projector.Theta(bound.left));
  const double q = NarrowToFloat(projector.Theta(bound.right));
  const double r = projector.Radius(bound.top);
  const double rise = r * std::cos(p) - r * std::cos(q);
  const double run = r * std::sin(q) - r * std::sin(p);
  return rise == 0.0 && run == 0.0 ? 0.0F : NarrowToFloat(-std::atan(rise / run));
}

// The bound of points that come one by one.
class RunningBound {
 public:
  void Add(const CPoint& point) {
    bound_.left = std::min(bound_.left, point.x);
    bound_.right = std::max(bound_.right, point.x);
    bound_.top = std::max(bound_.top, point.y);
    bound_.bottom = std::min(bound_.bottom, point.y);
  }
  const CRect& Get() const { return bound_; }

 private:
  CRect bound_{kLimit, -kLimit, -kLimit, kLimit};
};

}  // namespace

void CVELAMap::NormalizeCoords() {
  const CRectF& frame = drawRoot->GetBoundRectF();
  if (longLat == 0) {
    NormalizePlain(frame);
  } else {
    NormalizeConic(frame);
  }
}

void CVELAMap::NormalizePlain(const CRectF& frame) {
  const double width = double{frame.right} - frame.left;
  const double height = NarrowToFloat(double{frame.top} - frame.bottom);
  CMapOb::NormalizeCoords(ScaleFor(width, height), frame.left, frame.top);
}

void CVELAMap::NormalizeConic(const CRectF& frame) {
  const float lonSum = NarrowToFloat(double{frame.right} + frame.left);
  const Cone cone = ConeFor(frame, lonSum);
  const CRectF projected = ProjectedFrame(frame, lonSum, Projector(cone));
  const double width = NarrowToFloat(double{projected.right} - projected.left);
  const double height = double{projected.top} - projected.bottom;
  const float scale = ScaleFor(width, height);
  boundRect = {0, 0, TruncateToInt(width * scale), TruncateToInt(-height * scale)};
  CMapOb::NormalizeCoords(scale, projected.left, projected.top, cone.refLat, cone.refLong,
                          cone.coneConst);
}

// Radii are kept as floats, and those of a cone that touches near the equator are large: their last
// bit is a step from north to south that no vertex can stand inside. Such a step of more units of
// the working space than this is coarser than the pixels of a page of 4000.
void CVELAMap::RemarkOnPrecision(std::string_view file) const {
  constexpr double kCoarsest = 8.0;
  if (longLat == 0) return;
  const CRectF& frame = drawRoot->GetBoundRectF();
  const float lonSum = NarrowToFloat(double{frame.right} + frame.left);
  const Cone cone = ConeFor(frame, lonSum);
  const CRectF projected = ProjectedFrame(frame, lonSum, Projector(cone));
  const double width = double{projected.right} - projected.left;
  const double height = std::sin(frame.top * kRadiansPerDegree - cone.refLat) -
                        std::sin(frame.bottom * kRadiansPerDegree - cone.refLat);
  constexpr float kFar = std::numeric_limits<float>::max();
  const double radius = std::abs(double{cone.coneConst});
  const double step = double{std::nextafter(NarrowToFloat(radius), kFar)} - radius;
  if (!(height > 0.0) || step * kFrameSize <= kCoarsest * std::max(width, height)) return;
  const std::string middle =
      vexel::ShortestText(NarrowToFloat((double{frame.top} + frame.bottom) / 2));
  CHost::GetCurrent().Remark({.kind = vexel::RemarkKind::coarseNearEquator,
                              .file = file,
                              .found = middle,
                              .counted = TruncateToInt(height / step) + 1});
}

void CMapOb::NormalizeCoords(float scale, float xOrigin, float yOrigin) {
  const auto column = [=](float x) { return TruncateToInt((double{x} - xOrigin) * scale); };
  const auto row = [=](float y) { return TruncateToInt((double{y} - yOrigin) * scale); };
  boundRect = {column(boundRectF.left), row(boundRectF.top), column(boundRectF.right),
               row(boundRectF.bottom)};
  for (CPolygon* polygon : polygons) {
    polygon->AppendProjected([&](const tagVELAPOINTF& point) {
      return CPoint{column(point.x), row(point.y)};
    });
  }
  for (CMapOb* child : children) child->NormalizeCoords(scale, xOrigin, yOrigin);
}

void CMapOb::NormalizeCoords(float scale, float xOrigin, float yOrigin, float refLat, float refLong,
                             float coneConst) {
  ProjectPolygons(scale, xOrigin, yOrigin, {refLat, refLong, coneConst});
  for (CMapOb* child : children) {
    child->NormalizeCoords(scale, xOrigin, yOrigin, refLat, refLong, coneConst);
  }
}

void CMapOb::ProjectPolygons(float scale, float xOrigin, float yOrigin, const Cone& cone) {
  if (polygons.IsEmpty()) return;
  const Projector projector(cone);
  RunningBound bound;
  for (CPolygon* polygon : polygons) {
    polygon->AppendProjected([&](const tagVELAPOINTF& point) {
      const double theta = projector.Theta(point.x);
      const double r = projector.Radius(point.y);
      const CPoint projected{TruncateToInt((r * std::sin(theta) - xOrigin) * scale),
                             TruncateToInt((-r * std::cos(theta) - yOrigin) * scale)};
      bound.Add(projected);
      return projected;
    });
  }
  boundRect = bound.Get();
  angle = UprightAngle(boundRectF, projector);
}

void CMapOb::Conic(float* x, float* y, float refLat, float refLong, float coneConst) {
  const double lon = NarrowToFloat(double{*x} * kRadiansPerDegree);
  const double lat = NarrowToFloat(double{*y} * kRadiansPerDegree);
  const double theta = (lon - refLong) * std::sin(static_cast<double>(refLat));
  const double r = NarrowToFloat(coneConst - std::sin(lat - refLat));
  *x = NarrowToFloat(r * std::sin(theta));
  *y = NarrowToFloat(-r * std::cos(theta));
}

void CMapOb::GetRotatedRect(const CMapOb* root, CRectF* rect) const {
  constexpr float kFar = std::numeric_limits<float>::max();
  CRectF extent(kFar, kFar, -kFar, -kFar);
  const double s = NarrowToFloat(std::sin(double{root->angle}));
  const double c = NarrowToFloat(std::cos(double{root->angle}));
  for (const CPolygon* polygon : polygons) {
    for (const CPoint& point : polygon->GetPoints()) {
      const float x = NarrowToFloat(point.x * c - point.y * s);
      const float y = NarrowToFloat(point.x * s + point.y * c);
      extent = CRectF(std::min(extent.left, x), std::min(extent.top, y), std::max(extent.right, x),
                      std::max(extent.bottom, y));
    }
  }
  *rect = extent;
}
