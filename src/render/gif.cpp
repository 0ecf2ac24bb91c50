#include "render/gif.h"

#include <gd.h>

#include <algorithm>
#include <limits>
#include <new>

#include "messages/messages.h"
#include "platform/exceptions.h"
#include "platform/host.h"
#include "platform/ref_or_throw.h"
#include "render/encode.h"
#include "render/fill.h"
#include "render/line.h"
#include "render/place.h"
#include "render/ring.h"
#include "render/scale.h"

namespace {

constexpr int kLongerSide = 500;
constexpr int kMostPixelsOfSide = 65535;  // a GIF's sides are 16-bit numbers
constexpr unsigned long kWhite = 0xFFFFFF;
constexpr unsigned long kBlack = 0;

struct Channels {
  int red;
  int green;
  int blue;
};

Channels ChannelsOf(unsigned long color) {
  return {static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
          static_cast<int>(color >> 16 & 0xFF)};
}

// Sides of an image for a rectangle with y growing upward.
CPoint SizeFor(const CRect& source) {
  const int dx = vexel::Distance(source.left, source.right);
  const int dy = vexel::Distance(source.bottom, source.top);
  if (dx <= 0 || dy <= 0) AfxThrowInvalidArgException();
  if (dx < dy) return {vexel::Quotient(dx, kLongerSide, dy), kLongerSide};
  return {kLongerSide, vexel::Quotient(dy, kLongerSide, dx)};
}

bool WriteBytes(std::span<const unsigned char> bytes, const CString& path) {
  CFile file;
  const unsigned flags = CFile::modeCreate | CFile::modeWrite | CFile::typeBinary;
  if (file.Open(path.GetString(), flags) == 0) return false;
  file.Write(bytes.data(), bytes.size());
  return file.Close() != 0;
}

}  // namespace

CObject* CGif::CreateObject() { return new CGif; }

CRuntimeClass* CGif::GetThisClass() {
  static constinit CRuntimeClass record{"CGif", &CGif::CreateObject, &CObject::GetThisClass};
  return &record;
}

CRuntimeClass* CGif::GetRuntimeClass() const { return GetThisClass(); }

CGif::CGif() : filler_(std::make_unique<vexel::PolygonFiller>()) {}

CGif::CGif(int imageWidth, int imageHeight, const CString& file) : CGif() {
  width = imageWidth;
  height = imageHeight;
  fileName = file;
  CreateImage();
}

CGif::CGif(const CRect& source, const CString& file) : CGif() {
  const CPoint size = SizeFor(source);
  rect = source;
  width = size.x;
  height = size.y;
  fileName = file;
  CreateImage();
}

CGif::~CGif() { DestroyImage(); }

int CGif::GetRGB(unsigned long color) {
  const auto value = static_cast<std::uint32_t>(color);
  const auto found = indexes_.find(value);
  if (found != indexes_.end()) return found->second;
  gdImageStruct& canvas = GetImage();
  const Channels channels = ChannelsOf(value);
  int index = gdImageColorAllocate(&canvas, channels.red, channels.green, channels.blue);
  if (index < 0) index = gdImageColorClosest(&canvas, channels.red, channels.green, channels.blue);
  colorRgb.push_back(value);
  colorIndex.push_back(index);
  ++numColors;
  indexes_.emplace(value, index);
  return index;
}

void CGif::SetPixel(int x, int y, unsigned long color) {
  const int index = GetRGB(color);
  gdImageSetPixel(&GetImage(), x, y, index);
}

int CGif::GetPixel(int x, int y) const {
  const gdImageStruct& canvas = vexel::RefOrThrow(image);
  const bool isInside = x >= 0 && y >= 0 && x < canvas.sx && y < canvas.sy;
  return isInside ? canvas.pixels[y][x] : -1;
}

void CGif::SetPolygon(const CPolygon* polygon) {
  const vexel::Axis column(rect.left, rect.right, 0, width);
  const vexel::Axis row(rect.top, rect.bottom, 0, height);
  SetRing(vexel::RefOrThrow(polygon).GetPoints(), column, row, row);
}

void CGif::DrawPolygon() { OutlineIn(GetRing(), black); }

void CGif::DrawOutlinePolygon(unsigned long color) { OutlineIn(GetRing(), GetRGB(color)); }

void CGif::FillPolygon(unsigned long color) { FillIn(GetRing(), GetRGB(color)); }

std::vector<unsigned char> CGif::GetFileBytes() { return vexel::EncodeGif(GetImage()); }

int CGif::Save() {
  if (WriteBytes(GetFileBytes(), fileName)) return 1;
  vexel::Tell(CHost::warning, vexel::Message::writeFailed, {.file = fileName.View()}, fileName);
  return 0;
}

void CGif::CreateImage() {
  const auto isSide = [](int side) { return side >= 1 && side <= kMostPixelsOfSide; };
  if (!isSide(width) || !isSide(height)) AfxThrowInvalidArgException();
  DestroyImage();
  // More pixels than an int counts are beyond gd, which would say so on standard error.
  if (height > std::numeric_limits<int>::max() / width) throw std::bad_alloc();
  image = gdImageCreate(width, height);
  if (image == nullptr) throw std::bad_alloc();
  ownsImage = 1;
  white = GetRGB(kWhite);
  black = GetRGB(kBlack);
}

void CGif::DestroyImage() {
  if (ownsImage != 0) gdImageDestroy(image);
  image = nullptr;
  ownsImage = 0;
  indexes_.clear();
  colorRgb.clear();
  colorIndex.clear();
  numColors = 0;
}

void CGif::SetRing(std::span<const CPoint> ring, const vexel::Axis& column, const vexel::Axis& row,
                   const vexel::Axis& startRow) {
  numPoints = static_cast<int>(ring.size());
  if (ring.empty()) AfxThrowInvalidArgException();
  points.MakeRoom(ring.size());
  const int firstRow = startRow(ring.front().y);
  const auto runEnd = std::find_if(ring.rbegin(), ring.rend(), [&](const CPoint& vertex) {
    return startRow(vertex.y) != firstRow;
  });
  const auto start = runEnd == ring.rend() ? ring.begin() : runEnd.base();
  const auto before = static_cast<std::size_t>(start - ring.begin());
  const auto behind = ring.size() - before;
  vexel::PlaceVertices(ring.subspan(before), column, row, points.begin());
  vexel::PlaceVertices(ring.first(before), column, row, points.begin() + behind);
}

std::span<const CPoint> CGif::GetVertices() const {
  const auto count = static_cast<std::size_t>(std::max(numPoints, 0));
  return std::span(points.data(), points.size()).first(std::min(count, points.size()));
}

vexel::Ring CGif::GetRing() const { return vexel::Ring(GetVertices()); }

vexel::Ring CGif::GetDistinctRing() {
  const std::span<const CPoint> vertices = GetVertices();
  distinct_.MakeRoom(vertices.size());
  return vexel::Ring({distinct_.begin(), vexel::CopyDistinct(vertices, distinct_.begin())});
}

gdImageStruct& CGif::GetImage() { return vexel::RefOrThrow(image); }

void CGif::OutlineIn(const vexel::Ring& ring, int paletteIndex) {
  vexel::DrawRing(GetImage(), ring, paletteIndex);
}

void CGif::FillIn(const vexel::Ring& ring, int paletteIndex) {
  filler_->Fill(GetImage(), ring, paletteIndex);
}
