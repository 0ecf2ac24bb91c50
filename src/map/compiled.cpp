// The compiled form of a map: a tag, the head, the tree with integer points, the tree again with
// float points.

#include <algorithm>
#include <array>
#include <bit>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "map/formats.h"
#include "map/map.h"
#include "messages/messages.h"
#include "platform/archive.h"
#include "platform/host.h"

namespace {

using vexel::Message;
using vexel::MessageText;

// The tag with the byte behind it.
constexpr std::size_t kTagSize = vexel::kCompiledTag.size() + 1;
static_assert(vexel::kOldCompiledTag.size() + 1 == kTagSize);

bool IsTag(std::string_view bytes, std::string_view tag) {
  return bytes.size() == kTagSize && bytes.back() == vexel::kBehindCompiledTag &&
         vexel::EqualNoCase(bytes.substr(0, tag.size()), tag);
}

// Points that are read at a time: a count in a file is only believed as far as its bytes go.
constexpr int kPointsAtATime = 8192;

// A point as it stands in the file, x before y.
template <typename Point>
void StorePoints(CArchive& ar, std::span<const Point> points) {
  static_assert(sizeof(Point) == 8);
  if (points.empty()) return;
  if constexpr (std::endian::native == std::endian::little) {
    ar.Write(points.data(), points.size_bytes());
  } else {
    for (const Point& point : points) ar << point.x << point.y;
  }
}

template <typename Point>
void LoadPoints(CArchive& ar, vexel::GrowArray<Point>& points, int count) {
  static_assert(sizeof(Point) == 8);
  points.RemoveAll();
  for (int left = count; left > 0; left -= kPointsAtATime) {
    const int now = std::min(left, kPointsAtATime);
    Point* to = points.Extend(now);
    // A file that ends in their midst leaves points of a known value.
    const auto bytes = static_cast<std::size_t>(now) * sizeof(Point);
    if (!ar.Holds(bytes)) std::fill_n(to, now, Point{});
    if constexpr (std::endian::native == std::endian::little) {
      ar.ReadExactly(to, bytes);
    } else {
      std::for_each(to, to + now, [&](Point& point) { ar >> point.x >> point.y; });
    }
  }
}

std::int32_t LoadCount(CArchive& ar) {
  std::int32_t count = 0;
  ar >> count;
  return std::max(count, 0);
}

[[noreturn]] void ThrowDamage(Message number) {
  throw CArchiveException(CArchiveException::generic, MessageText(number).data());
}

// The two halves of a file describe one tree.
void CheckShape(int expected, int found) {
  if (expected == found) return;
  ThrowDamage(Message::halvesDiffer);
}

}  // namespace

void CPolygon::Store(CArchive& ar, bool floats) const {
  // The count is that of the integer points in both halves.
  const auto count = static_cast<std::size_t>(GetSize());
  ar << GetSize();
  if (!floats) {
    StorePoints(ar, GetPoints());
  } else {
    if (GetPointsF().size() < count) AfxThrowInvalidArgException();
    StorePoints(ar, GetPointsF().first(count));
  }
  ar << hole;
}

void CPolygon::Load(CArchive& ar, bool floats) {
  const int count = LoadCount(ar);
  if (floats) {
    LoadPoints(ar, pointsF, count);
  } else {
    LoadPoints(ar, points, count);
  }
  ar >> hole;
}

void CMapOb::Serialize(CArchive& ar, int floatPass, bool oldFormat) {
  if (ar.IsStoring()) {
    Store(ar, floatPass != 0);
  } else if (floatPass == 0 || (polygons.IsEmpty() && children.IsEmpty())) {
    LoadNew(ar, floatPass != 0, oldFormat, 0);
  } else {
    MergeFloats(ar, oldFormat, 0, 0);
  }
}

void CMapOb::Store(CArchive& ar, bool floats) {
  ar << name;
  if (floats) {
    ar << boundRectF.top << boundRectF.bottom << boundRectF.left << boundRectF.right;
  } else {
    ar << boundRect.left << boundRect.top << boundRect.right << boundRect.bottom << angle;
  }
  ar << GetNumPolygons();
  area.Serialize(ar);
  ar << GetNumPolygons();
  for (const CPolygon* polygon : polygons) polygon->Store(ar, floats);
  ar << GetNumChildren();
  for (CMapOb* child : children) child->Serialize(ar, floats ? 1 : 0, false);
}

void CMapOb::LoadKey(CArchive& ar, bool oldFormat) {
  area.Serialize(ar);
  if (oldFormat) std::replace(area.codes.begin(), area.codes.end(), 0, CAreaStruct::kUnset);
}

// Appends polygons and children as the record of either form tells them.
void CMapOb::LoadNew(CArchive& ar, bool floats, bool oldFormat, int depth) {
  std::int32_t dropped = 0;
  ar >> name;
  if (floats) {
    ar >> boundRectF.top >> boundRectF.bottom >> boundRectF.left >> boundRectF.right;
  } else {
    ar >> boundRect.left >> boundRect.top >> boundRect.right >> boundRect.bottom >> angle;
  }
  ar >> dropped;
  LoadKey(ar, oldFormat);
  LoadPolygons(ar, floats);
  const std::int32_t count = LoadCount(ar);
  if (count > 0 && depth > vexel::kDeepestNesting) ThrowDamage(Message::compiledTooDeep);
  for (std::int32_t left = count; left > 0; --left) {
    auto child = std::make_unique<CMapOb>();
    child->LoadNew(ar, floats, oldFormat, depth + 1);
    Adopt(std::move(child));
  }
}

void CMapOb::LoadPolygons(CArchive& ar, bool floats) {
  std::unique_ptr<CPolygon> polygon;
  for (std::int32_t left = LoadCount(ar); left > 0; --left) {
    if (polygon == nullptr) polygon = std::make_unique<CPolygon>();
    polygon->Load(ar, floats);
    if (CPolygon* shared = SharedFor(*polygon); shared != nullptr) {
      polygons.Add(shared);
    } else {
      Adopt(std::exchange(polygon, nullptr));
    }
  }
}

// Fills a polygon with its floats. One that is shared has no points and must get none.
void CMapOb::MergePolygon(CArchive& ar, CPolygon*& polygon) {
  if (!polygon->shared) {
    polygon->Load(ar, true);
    CheckShape(polygon->GetSize(), polygon->GetSizeF());
    return;
  }
  auto found = std::make_unique<CPolygon>();
  found->Load(ar, true);
  CheckShape(0, found->GetSizeF());
  CPolygon* const shared = SharedFor(*found);
  polygon = shared != nullptr ? shared : found.release();
}

// Fills the polygons and children from the given ones on, which the integer half has made.
void CMapOb::MergeFloats(CArchive& ar, bool oldFormat, int firstPolygon, int firstChild) {
  std::int32_t dropped = 0;
  ar >> name;
  ar >> boundRectF.top >> boundRectF.bottom >> boundRectF.left >> boundRectF.right >> dropped;
  LoadKey(ar, oldFormat);
  CheckShape(GetNumPolygons() - firstPolygon, LoadCount(ar));
  for (CPolygon*& polygon : polygons.Elements().subspan(static_cast<std::size_t>(firstPolygon))) {
    MergePolygon(ar, polygon);
  }
  CheckShape(GetNumChildren() - firstChild, LoadCount(ar));
  for (CMapOb* child : children.Elements().subspan(static_cast<std::size_t>(firstChild))) {
    child->MergeFloats(ar, oldFormat, 0, 0);
  }
}

int CVELAMap::SaveMpc(const CVELAString& path) {
  if (floatsLoaded == 0) {
    vexel::Tell(CHost::ok, Message::noFloatCoordinates, {.file = path.View()});
    return 0;
  }
  CFile file;
  constexpr unsigned kFlags =
      CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive | CFile::typeBinary;
  if (file.Open(path.GetString(), kFlags) == 0) {
    vexel::TellOfFile(CHost::warning, Message::compiledMapNotWritten, file, path);
    return 0;
  }
  CArchive ar(&file, CArchive::store);
  Serialize(ar, 1);
  ar.Close();
  if (file.Close() == 0) {
    vexel::TellOfFile(CHost::warning, Message::writeFailed, file, path);
    return 0;
  }
  return compiledValid;
}

void CVELAMap::Serialize(CArchive& ar, int withFloatPass) {
  const vexel::WaitCursor wait;
  if (ar.IsStoring()) {
    StoreMap(ar, withFloatPass);
  } else {
    LoadMap(ar, withFloatPass);
  }
}

void CVELAMap::StoreMap(CArchive& ar, int withFloatPass) {
  ar.Write(vexel::kCompiledTag.data(), vexel::kCompiledTag.size());
  ar << vexel::kBehindCompiledTag;
  ar << longLat << numMapLevels;
  for (const CVELAString& levelName : levelNames) ar << levelName;
  Serialize(ar, 0, false);
  if (withFloatPass != 0) Serialize(ar, 1, false);
  compiledValid = 1;
}

void CVELAMap::LoadMap(CArchive& ar, int withFloatPass) {
  if (!LoadTag(ar)) {
    compiledValid = 0;
    return;
  }
  ar >> longLat >> numMapLevels;
  for (CVELAString& levelName : levelNames) ar >> levelName;
  const int firstPolygon = GetNumPolygons();
  const int firstChild = GetNumChildren();
  const bool oldFormat = compiledOldFormat != 0;
  const std::int64_t before = ar.GetBytesLeft();
  Serialize(ar, 0, oldFormat);
  if (withFloatPass != 0) {
    MergeFloats(ar, oldFormat, firstPolygon, firstChild);
  } else {
    bytesBehind = ar.GetBytesLeft();
    bytesOfIntegers = before - bytesBehind;
  }
  compiledValid = 1;
}

// Whether the compiled file loaded last, of which the floats were not wanted, ends within them:
// they take as many bytes as the integers but for the angle of each node. A file may also have
// none.
bool CVELAMap::EndsInFloats(int nodes) const {
  return bytesBehind > 0 && bytesBehind < bytesOfIntegers - std::int64_t{sizeof(angle)} * nodes;
}

bool CVELAMap::LoadTag(CArchive& ar) {
  std::array<char, kTagSize> tag{};
  const std::string_view found(tag.data(), ar.Read(tag.data(), tag.size()));
  const bool isOld = IsTag(found, vexel::kOldCompiledTag);
  if (!isOld && !IsTag(found, vexel::kCompiledTag)) return false;
  compiledOldFormat = isOld ? 1 : 0;
  return true;
}
