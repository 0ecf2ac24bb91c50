#include <gd.h>
#include <gdfontmb.h>
#include <gdfonts.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "legend/legend.h"
#include "map/map.h"
#include "map/mapob.h"
#include "platform/ref_or_throw.h"
#include "render/latin2.h"
#include "render/layout.h"
#include "render/line.h"
#include "render/mapgif.h"
#include "render/ring.h"
#include "render/scale.h"

namespace {

using Wide = std::int64_t;  // sums of pixels, which an odd page may carry beyond an int

constexpr unsigned long kBoxColor = 0xFFFFFF;

// In pixels, from the corner of the box that they stand in.
constexpr int kHeadingTop = 5;
constexpr int kFirstRowTop = 25;
constexpr int kSwatchLeft = 5;
constexpr int kSwatchSize = 15;
constexpr int kRowTextLeft = 25;
constexpr int kValueBoxHeight = 40;
constexpr int kValueTextLeft = 5;
constexpr int kValueNameTop = 5;
constexpr int kValueTop = 25;

// The title is centred as if its characters were that wide, so that it sits right of the middle.
constexpr int kTitleCharacter = 5;

Wide TextWidth(const std::string& drawn) {
  return static_cast<Wide>(drawn.size()) * vexel::kSmallWidth;
}

// The middle of a rectangle, whichever way its sides run.
CPoint CentreOf(const CRect& rect) {
  const auto middle = [](int a, int b) {
    return static_cast<int>(std::min(a, b) + std::abs(Wide{b} - a) / 2);
  };
  return {middle(rect.left, rect.right), middle(rect.top, rect.bottom)};
}

// A box as a polygon; right and bottom are the last pixels that belong to it.
std::array<CPoint, 4> CornersOf(Wide left, Wide top, Wide right, Wide bottom) {
  const CRect box = vexel::MakeRect(left, top, right, bottom);
  return {
      {{box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}}};
}

}  // namespace

void CMapGif::DrawTitle() {
  const std::string title = vexel::DrawnText(vexel::RefOrThrow(map).GenerateTitle().View());
  const Wide length = static_cast<Wide>(title.size());
  DrawText(true, std::max<Wide>((width - kTitleCharacter * length) / 2, 0), 0, title);
}

void CMapGif::DrawLegend() {
  const CLegend& shown = vexel::RefOrThrow(legend);
  const CRect& box = legendRect;
  if (shown.drawFrame != 0) {
    const auto corners = CornersOf(box.left, box.top, Wide{box.right} - 1, Wide{box.bottom} - 1);
    OutlineIn(vexel::Ring(corners), black);
  }
  const std::string heading = vexel::DrawnText(shown.title.View());
  const Wide offset = std::max<Wide>((box.right - TextWidth(heading) - box.left) / 2, 0);
  DrawText(false, box.left + offset, Wide{box.top} + kHeadingTop, heading);
  Wide rowTop = Wide{box.top} + kFirstRowTop;
  for (const LegendRow& row : shown.GetRows()) {
    DrawLegendRow(row, rowTop);
    rowTop += vexel::kLegendRowHeight;
  }
}

void CMapGif::DrawLegendRow(const LegendRow& row, std::int64_t top) {
  const Wide left = Wide{legendRect.left} + kSwatchLeft;
  const auto corners = CornersOf(left, top, left + kSwatchSize, top + kSwatchSize);
  const vexel::Ring swatch(corners);
  FillIn(swatch, GetRGB(row.group->color));
  OutlineIn(swatch, black);
  DrawText(false, Wide{legendRect.left} + kRowTextLeft, top, vexel::DrawnText(row.text));
}

void CMapGif::DrawValueBox(CMapOb* node) {
  const CMapOb& area = vexel::RefOrThrow(node);
  const std::string name = vexel::DrawnText(area.GetName().View());
  const std::string value = vexel::DrawnText(vexel::RefOrThrow(map).GetDataStr(node).View());
  const CPoint corner = ValueBoxCorner(area);

  const Wide boxWidth = std::max(TextWidth(name), TextWidth(value)) + 2 * Wide{kValueTextLeft};
  const Wide left = corner.x - std::max<Wide>(corner.x + boxWidth - width + 1, 0);
  const Wide top = corner.y - std::max<Wide>(Wide{corner.y} + kValueBoxHeight - height + 1, 0);
  const Wide right = left + boxWidth - 1;

  const auto corners = CornersOf(left, top, right, top + kValueBoxHeight - 1);
  const vexel::Ring box(corners);
  FillIn(box, GetRGB(kBoxColor));
  OutlineIn(box, black);
  DrawText(false, left + kValueTextLeft, top + kValueNameTop, name);
  const CRect line = vexel::MakeRect(left, top + kValueBoxHeight / 2, right, 0);
  vexel::DrawLine(GetImage(), {line.left, line.top}, {line.right, line.top}, black);
  DrawText(false, left + kValueTextLeft, top + kValueTop, value);
}

// The pixel over the centre of an area.
CPoint CMapGif::ValueBoxCorner(const CMapOb& area) const {
  const CMapOb* root = map->GetDrawRoot();
  const bool turned = RootAngle() != 0.0F;
  CRect source = area.GetBoundRect();
  if (turned) {
    CRectF rotated;
    area.GetRotatedRect(root, &rotated);
    source = vexel::Truncated(rotated);
  }
  const CPoint centre = CentreOf(source);
  return {ColumnAxis()(centre.x), RowAxis(turned)(centre.y)};
}

// Draws characters of the font in black, the top left corner of the first at (x, y). Those beside
// the image are passed over.
void CMapGif::DrawText(bool bold, std::int64_t x, std::int64_t y, std::string_view drawn) {
  gdImageStruct& canvas = GetImage();
  gdFont* font = bold ? gdFontGetMediumBold() : gdFontGetSmall();
  if (y >= canvas.sy || y + font->h <= 0) return;
  const Wide size = static_cast<Wide>(drawn.size());
  for (Wide i = x < 0 ? -x / font->w : 0; i < size && x + i * font->w < canvas.sx; ++i) {
    gdImageChar(&canvas, font, static_cast<int>(x + i * font->w), static_cast<int>(y),
                static_cast<unsigned char>(drawn[static_cast<std::size_t>(i)]), black);
  }
}
