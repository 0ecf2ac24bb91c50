#include "geometry.h"

#include <cpl_error.h>
#include <ogr_geometry.h>
#include <ogr_spatialref.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "date_line.h"
#include "geometry_parts.h"
#include "kit/request/error.h"

namespace vexel::import {

namespace {

using Polygons = std::unique_ptr<OGRMultiPolygon>;

bool IsFinite(const OGRRawPoint& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

bool IsSame(const OGRRawPoint& a, const OGRRawPoint& b) { return a.x == b.x && a.y == b.y; }

std::vector<OGRRawPoint> PointsOf(const OGRLinearRing& ring) {
  std::vector<OGRRawPoint> points(static_cast<std::size_t>(ring.getNumPoints()));
  ring.getPoints(points.data());
  return points;
}

void SetPoints(OGRLinearRing& ring, const std::vector<OGRRawPoint>& points) {
  ring.setPoints(static_cast<int>(points.size()), points.data());
}

// Whether a ring encloses anything: three different points in a row do not tell, as it may go to
// and fro between two.
bool HasThreePoints(const std::vector<OGRRawPoint>& points) {
  const auto other = std::find_if(points.begin(), points.end(), [&](const OGRRawPoint& point) {
    return !IsSame(point, points.front());
  });
  return std::any_of(other, points.end(), [&](const OGRRawPoint& point) {
    return !IsSame(point, points.front()) && !IsSame(point, *other);
  });
}

// Takes out of a ring what is no point, and has it run as rings of a map do: outlines with the
// clock, holes against it, which formats do not agree on. False when too little is left.
bool CleanRing(OGRLinearRing& ring, bool isHole, bool& hadOthers) {
  std::vector<OGRRawPoint> points = PointsOf(ring);
  hadOthers = std::erase_if(points, [](const OGRRawPoint& p) { return !IsFinite(p); }) > 0;
  if (!HasThreePoints(points)) return false;
  if (hadOthers || !IsSame(points.front(), points.back())) {
    if (!IsSame(points.front(), points.back())) points.push_back(points.front());
    SetPoints(ring, points);
  }
  if ((ring.isClockwise() != FALSE) == isHole) ring.reverseWindingOrder();
  return true;
}

// Rings of points, each of three different ones at least.
Polygons Cleaned(OGRMultiPolygon& all, const std::string& name, Flaws& flaws) {
  auto clean = std::make_unique<OGRMultiPolygon>();
  bool hadOthers = false;
  bool hadShort = false;
  for (const std::unique_ptr<OGRGeometry>& part : TakeParts(all)) {
    OGRPolygon* const polygon = part->toPolygon();
    polygon->flattenTo2D();
    auto kept = std::make_unique<OGRPolygon>();
    const int holes = polygon->getNumInteriorRings();
    for (int i = -1; i < holes; ++i) {
      std::unique_ptr<OGRLinearRing> ring(i < 0 ? polygon->stealExteriorRing()
                                                : polygon->stealInteriorRing(i));
      bool ringHadOthers = false;
      const bool isRing = ring != nullptr && CleanRing(*ring, i >= 0, ringHadOthers);
      hadOthers = hadOthers || ringHadOthers;
      hadShort = hadShort || (!isRing && ring != nullptr && ring->getNumPoints() > 0);
      if (isRing) kept->addRingDirectly(ring.release());
      if (!isRing && i < 0) break;  // and its holes with it
    }
    if (kept->getExteriorRing() != nullptr) clean->addGeometryDirectly(kept.release());
  }
  if (hadOthers) flaws.Add(Flaw::notFinite, name);
  if (hadShort) flaws.Add(Flaw::shortRing, name);
  return clean;
}

// Hears why a geometry is not valid.
class ValidityListener {
 public:
  ValidityListener() { CPLPushErrorHandlerEx(Hear, this); }
  ValidityListener(const ValidityListener&) = delete;
  ValidityListener& operator=(const ValidityListener&) = delete;
  ~ValidityListener() { CPLPopErrorHandler(); }

  // A ring that touches itself is filled as it should be.
  bool OnlyTouches() const { return text_.starts_with("Ring Self-intersection"); }

 private:
  static void CPL_STDCALL Hear(CPLErr /*kind*/, CPLErrorNum /*number*/, const char* text) {
    static_cast<ValidityListener*>(CPLGetErrorHandlerUserData())->text_ = text;
  }

  std::string text_;
};

// Outlines that cross nothing. What is inside of each ring stays so; vertices are only added.
Polygons Repaired(Polygons polygons, const std::string& name, Flaws& flaws) {
  const ValidityListener listener;
  const OGRGeometry* toCheck = polygons.get();
  if (polygons->getNumGeometries() == 1) toCheck = polygons->getGeometryRef(0);
  if (toCheck->IsValid() != FALSE || listener.OnlyTouches()) return polygons;
  std::array<const char*, 2> options{"METHOD=STRUCTURE", nullptr};
  std::unique_ptr<OGRGeometry> repaired(
      polygons->MakeValid(const_cast<char**>(options.data())));  // NOLINT: an older interface
  auto result = std::make_unique<OGRMultiPolygon>();
  if (repaired != nullptr) TakePolygons(std::move(repaired), *result);
  flaws.Add(Flaw::crossing, name);
  return result->IsEmpty() != FALSE ? std::move(polygons) : std::move(result);
}

void Project(OGRMultiPolygon& polygons, OGRCoordinateTransformation& projection,
             const std::string& name) {
  std::vector<double> xs;
  std::vector<double> ys;
  std::vector<int> done;
  for (OGRPolygon* polygon : polygons) {
    for (OGRLinearRing* ring : *polygon) {
      std::vector<OGRRawPoint> points = PointsOf(*ring);
      xs.resize(points.size());
      ys.resize(points.size());
      done.resize(points.size());
      std::transform(points.begin(), points.end(), xs.begin(), [](auto& p) { return p.x; });
      std::transform(points.begin(), points.end(), ys.begin(), [](auto& p) { return p.y; });
      const QuietLibrary quiet;
      projection.Transform(static_cast<int>(points.size()), xs.data(), ys.data(), nullptr, nullptr,
                           done.data());
      for (std::size_t i = 0; i < points.size(); ++i) {
        if (done[i] == 0 || !std::isfinite(xs[i]) || !std::isfinite(ys[i])) {
          throw Failed(name + ": the point " + std::to_string(points[i].x) + " " +
                       std::to_string(points[i].y) +
                       " has no place in that projection; choose another --crs");
        }
        points[i] = OGRRawPoint(xs[i], ys[i]);
      }
      SetPoints(*ring, points);
    }
  }
}

// Narrowing to the floats of a map makes some neighbours equal, and some rings too short.
void AppendRing(const OGRLinearRing& ring, bool isHole, Shape& to, bool& hadShort) {
  Ring added{{}, isHole};
  added.vertices.reserve(static_cast<std::size_t>(ring.getNumPoints()));
  for (int i = 0; i < ring.getNumPoints(); ++i) {
    const Vertex vertex{static_cast<float>(ring.getX(i)), static_cast<float>(ring.getY(i))};
    if (added.vertices.empty() || added.vertices.back() != vertex) added.vertices.push_back(vertex);
  }
  while (added.vertices.size() > 1 && added.vertices.back() == added.vertices.front()) {
    added.vertices.pop_back();
  }
  if (added.vertices.size() < 3) {
    hadShort = true;
  } else {
    SetDirection(added);  // a repair or a projection may have turned it
    to.push_back(std::move(added));
  }
}

Shape Flattened(const OGRMultiPolygon& polygons, const std::string& name, Flaws& flaws) {
  Shape shape;
  bool hadShort = false;
  for (const OGRPolygon* polygon : polygons) {
    const std::size_t before = shape.size();
    AppendRing(*polygon->getExteriorRing(), false, shape, hadShort);
    if (shape.size() == before) continue;
    for (int i = 0; i < polygon->getNumInteriorRings(); ++i) {
      AppendRing(*polygon->getInteriorRing(i), true, shape, hadShort);
    }
  }
  if (hadShort) flaws.Add(Flaw::shortRing, name);
  return shape;
}

// A layer may lie about its extent, and with such numbers no work on degrees would end.
void CheckDegrees(const OGRMultiPolygon& polygons, const std::string& name) {
  constexpr double kMostLongitude = 540.0;
  constexpr double kMostLatitude = 90.001;
  OGREnvelope extent;
  polygons.getEnvelope(&extent);
  if (extent.MinX >= -kMostLongitude && extent.MaxX <= kMostLongitude &&
      extent.MinY >= -kMostLatitude && extent.MaxY <= kMostLatitude) {
    return;
  }
  throw Failed(name +
               ": its points are no longitudes and latitudes; name their coordinate system"
               " with --source-crs");
}

std::unique_ptr<OGRLinearRing> RingOf(const Ring& ring) {
  auto result = std::make_unique<OGRLinearRing>();
  result->setNumPoints(static_cast<int>(ring.vertices.size()));
  int i = 0;
  for (const Vertex& vertex : ring.vertices) {
    result->setPoint(i++, static_cast<double>(vertex.x), static_cast<double>(vertex.y));
  }
  result->closeRings();
  return result;
}

}  // namespace

Shape ShapeOf(std::unique_ptr<OGRGeometry> geometry, const Coordinates& coordinates,
              const std::string& name, Flaws& flaws) {
  auto all = std::make_unique<OGRMultiPolygon>();
  const bool others = geometry != nullptr && !TakePolygons(std::move(geometry), *all);
  if (all->getNumGeometries() == 0) {
    flaws.Add(others ? Flaw::notPolygon : Flaw::empty, name);
    return {};
  }
  Polygons polygons = Cleaned(*all, name, flaws);
  if (coordinates.inDegrees) CheckDegrees(*polygons, name);
  if (coordinates.inDegrees && CrossesDateLine(*polygons)) {
    polygons = CutAtDateLine(*polygons);
    flaws.Add(Flaw::dateLine, name);
  }
  if (polygons->getNumGeometries() > 0) polygons = Repaired(std::move(polygons), name, flaws);
  if (coordinates.projection != nullptr) Project(*polygons, *coordinates.projection, name);
  Shape shape = Flattened(*polygons, name, flaws);
  if (shape.empty()) flaws.Add(Flaw::empty, name);
  return shape;
}

Shape UnionOf(const std::vector<const Shape*>& shapes) {
  const QuietLibrary quiet;
  OGRMultiPolygon all;
  for (const Shape* shape : shapes) {
    std::unique_ptr<OGRPolygon> polygon;
    const auto add = [&] {
      if (polygon == nullptr) return;
      std::unique_ptr<OGRGeometry> valid(polygon->MakeValid());
      if (valid != nullptr) TakePolygons(std::move(valid), all);
    };
    for (const Ring& ring : *shape) {
      if (!ring.isHole) {
        add();
        polygon = std::make_unique<OGRPolygon>();
      }
      if (polygon != nullptr) polygon->addRingDirectly(RingOf(ring).release());
    }
    add();
  }
  std::unique_ptr<OGRGeometry> joined(all.UnionCascaded());
  OGRMultiPolygon result;
  if (joined != nullptr) TakePolygons(std::move(joined), result);
  Flaws unwanted;
  return Flattened(result, "", unwanted);
}

}  // namespace vexel::import
