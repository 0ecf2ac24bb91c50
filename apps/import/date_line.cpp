#include "date_line.h"

#include <ogr_geometry.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "geometry_parts.h"

namespace vexel::import {

namespace {

constexpr double kHalf = 180.0;
constexpr double kWhole = 360.0;
constexpr double kPole = 90.0;
constexpr double kAlmostPole = 89.9;

bool IsAlongPole(double a, double b) {
  return (a > kAlmostPole && b > kAlmostPole) || (a < -kAlmostPole && b < -kAlmostPole);
}

bool CrossesDateLine(const OGRLinearRing& ring) {
  for (int i = 0; i < ring.getNumPoints(); ++i) {
    if (std::abs(ring.getX(i)) > kHalf) return true;
    if (i == 0 || std::abs(ring.getX(i) - ring.getX(i - 1)) <= kHalf) continue;
    if (!IsAlongPole(ring.getY(i), ring.getY(i - 1))) return true;
  }
  return false;
}

// A closed ring whose longitudes go on past 180 degrees instead of jumping.
OGRLinearRing* Unrolled(const OGRLinearRing& ring) {
  auto result = std::make_unique<OGRLinearRing>();
  double turn = 0.0;
  double latitudes = 0.0;
  for (int i = 0; i < ring.getNumPoints(); ++i) {
    if (i > 0 && !IsAlongPole(ring.getY(i), ring.getY(i - 1))) {
      const double step = ring.getX(i) - ring.getX(i - 1);
      if (std::abs(step) > kHalf) turn -= std::copysign(kWhole, step);
    }
    latitudes += ring.getY(i);
    result->addPoint(ring.getX(i) + turn, ring.getY(i));
  }
  const int last = result->getNumPoints() - 1;
  if (std::abs(result->getX(last) - result->getX(0)) > kHalf) {  // around a pole
    const double pole = std::copysign(kPole, latitudes);
    // In steps, as an edge all the way would be one that jumps again.
    constexpr int kSteps = 4;
    const double from = result->getX(last);
    const double to = result->getX(0);
    for (int i = 0; i <= kSteps; ++i) result->addPoint(from + (to - from) * i / kSteps, pole);
    result->closeRings();
  }
  return result.release();
}

OGREnvelope EnvelopeOf(const OGRGeometry& geometry) {
  OGREnvelope envelope;
  geometry.getEnvelope(&envelope);
  return envelope;
}

void Shift(OGRLinearRing& ring, double by) {
  for (int i = 0; i < ring.getNumPoints(); ++i) ring.setPoint(i, ring.getX(i) + by, ring.getY(i));
}

// The outline unrolled, and its holes where they lie in it. One from end to end of the map would be
// rolled up to nothing: that is no jump.
std::unique_ptr<OGRPolygon> Unrolled(const OGRPolygon& polygon) {
  auto result = std::make_unique<OGRPolygon>();
  result->addRingDirectly(Unrolled(*polygon.getExteriorRing()));
  if (result->get_Area() == 0.0) return std::unique_ptr<OGRPolygon>(polygon.clone());
  const OGREnvelope outline = EnvelopeOf(*result);
  for (int i = 0; i < polygon.getNumInteriorRings(); ++i) {
    OGRLinearRing* hole = Unrolled(*polygon.getInteriorRing(i));
    const OGREnvelope bounds = EnvelopeOf(*hole);
    if (bounds.MinX < outline.MinX) Shift(*hole, kWhole);
    if (bounds.MaxX > outline.MaxX) Shift(*hole, -kWhole);
    result->addRingDirectly(hole);
  }
  return result;
}

// How many times around the earth a longitude lies.
int TurnOf(double longitude) { return static_cast<int>(std::floor((longitude + kHalf) / kWhole)); }

OGRPolygon Strip(double west) {
  OGRLinearRing ring;
  ring.addPoint(west, -kPole);
  ring.addPoint(west + kWhole, -kPole);
  ring.addPoint(west + kWhole, kPole);
  ring.addPoint(west, kPole);
  ring.closeRings();
  OGRPolygon strip;
  strip.addRing(&ring);
  return strip;
}

// Adds the polygons of what a cut has left, moved to the east.
void AddMoved(std::unique_ptr<OGRGeometry> cut, double by, OGRMultiPolygon& to) {
  OGRMultiPolygon polygons;
  TakePolygons(std::move(cut), polygons);
  for (std::unique_ptr<OGRGeometry>& part : TakeParts(polygons)) {
    for (OGRLinearRing* ring : *part->toPolygon()) Shift(*ring, by);
    to.addGeometryDirectly(part.release());
  }
}

}  // namespace

bool CrossesDateLine(const OGRMultiPolygon& polygons) {
  return std::any_of(polygons.begin(), polygons.end(), [](const OGRPolygon* polygon) {
    return std::any_of(polygon->begin(), polygon->end(),
                       [](const OGRLinearRing* ring) { return CrossesDateLine(*ring); });
  });
}

std::unique_ptr<OGRMultiPolygon> CutAtDateLine(const OGRMultiPolygon& polygons) {
  const QuietLibrary quiet;
  auto result = std::make_unique<OGRMultiPolygon>();
  for (const OGRPolygon* polygon : polygons) {
    std::unique_ptr<OGRGeometry> unrolled = Unrolled(*polygon);
    const OGREnvelope bounds = EnvelopeOf(*unrolled);
    if (bounds.MinX >= -kHalf && bounds.MaxX <= kHalf) {
      AddMoved(std::move(unrolled), 0.0, *result);
      continue;
    }
    if (unrolled->IsValid() == FALSE) {
      std::unique_ptr<OGRGeometry> valid(unrolled->MakeValid());
      if (valid != nullptr) unrolled = std::move(valid);
    }
    const int last = TurnOf(bounds.MaxX);
    for (int turn = TurnOf(bounds.MinX); turn <= last; ++turn) {
      const double west = turn * kWhole - kHalf;
      const OGRPolygon strip = Strip(west);
      std::unique_ptr<OGRGeometry> part(unrolled->Intersection(&strip));
      if (part != nullptr) AddMoved(std::move(part), -(west + kHalf), *result);
    }
  }
  return result;
}

}  // namespace vexel::import
