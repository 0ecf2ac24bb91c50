// Rings on a small image: the pixels of the fill and of the outline are those of gd's own calls.

#include <gd.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "render/fill.h"
#include "render/line.h"
#include "scratch.h"

namespace {

using namespace vexel::fuzz;

using Image = std::unique_ptr<gdImageStruct, decltype(&gdImageDestroy)>;

Image MakeImage(int width, int height) { return {gdImageCreate(width, height), &gdImageDestroy}; }

// Width and height, then vertices of two 16-bit numbers: where gd's own arithmetic is sound.
constexpr std::size_t kHead = 2;
constexpr int kFarthest = 23169;

std::vector<CPoint> TakeRing(const std::uint8_t* bytes, std::size_t size) {
  std::vector<CPoint> ring(std::min<std::size_t>(size / 4, 400));
  for (CPoint& point : ring) {
    std::int16_t column = 0;
    std::int16_t row = 0;
    std::memcpy(&column, bytes, sizeof column);
    std::memcpy(&row, bytes + sizeof column, sizeof row);
    bytes += 4;
    point = {std::clamp<int>(column, -kFarthest, kFarthest),
             std::clamp<int>(row, -kFarthest, kFarthest)};
  }
  return ring;
}

bool AreEqual(const gdImageStruct& a, const gdImageStruct& b) {
  for (int y = 0; y < a.sy; ++y) {
    if (!std::equal(a.pixels[y], a.pixels[y] + a.sx, b.pixels[y])) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  if (size < kHead + 4) return -1;
  const int width = 1 + bytes[0] % 64;
  const int height = 1 + bytes[1] % 64;
  const std::vector<CPoint> ring = TakeRing(bytes + kHead, size - kHead);
  std::vector<gdPoint> points;
  for (const CPoint& point : ring) points.push_back({point.x, point.y});
  const Image theirs = MakeImage(width, height);
  const Image ours = MakeImage(width, height);
  gdImageFilledPolygon(theirs.get(), points.data(), static_cast<int>(points.size()), 2);
  static vexel::PolygonFiller filler;
  filler.Fill(*ours, vexel::Ring(ring), 2);
  Require(AreEqual(*theirs, *ours), "a ring is filled as gd fills it");
  gdImagePolygon(theirs.get(), points.data(), static_cast<int>(points.size()), 1);
  vexel::DrawRing(*ours, vexel::Ring(ring), 1);
  Require(AreEqual(*theirs, *ours), "a ring is outlined as gd outlines it");
  return 0;
}
