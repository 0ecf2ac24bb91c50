#include "render/gif.h"

#include <array>
#include <cstdlib>

#include "platform/exceptions.h"
#include "render/render_fixture.h"

namespace vexel::test {
namespace {

TEST(CanvasTest, TheLongerSideOfARectangleGets500Pixels) {
  const std::pair<CRect, CPoint> cases[] = {
      {{0, 0, 1000, -400}, {500, 200}},
      {{-100, 500, 200, -400}, {166, 500}},
      {{5, 32000, 32005, 0}, {500, 500}},
      {{-2000000000, 1, 2000000000, -2000000000}, {500, 465}}};
  for (const auto& [source, size] : cases) {
    const ProbeGif gif(source, "x.gif");
    EXPECT_EQ(ToText(std::array{CPoint{gif.width, gif.height}}), ToText(std::array{size}))
        << ToText(source);
    EXPECT_EQ(ToText(std::array{CPoint{gif.image->sx, gif.image->sy}}), ToText(std::array{size}));
  }
}

TEST(CanvasTest, SizesThatNoGifHasAreRefused) {
  const CPoint sizes[] = {{0, 5}, {5, 0}, {-1, 5}, {65536, 5}, {5, 65536}};
  for (const CPoint& size : sizes) EXPECT_THROW(CGif(size.x, size.y, ""), CInvalidArgException);
  const CRect rects[] = {{0, 0, 0, 0}, {0, 0, 5, 5}, {5, 5, 0, 0}, {0, 1000, 1, 0}};
  for (const CRect& rect : rects)
    EXPECT_THROW(CGif(rect, ""), CInvalidArgException) << ToText(rect);
  EXPECT_THROW(CGif(65535, 65535, ""), std::bad_alloc);
  EXPECT_EQ(ProbeGif(65535, 1, "").image->sx, 65535);
}

TEST(CanvasTest, WithoutAnImageItRefusesToDraw) {
  ProbeGif gif;
  EXPECT_EQ(gif.ownsImage, 0);
  EXPECT_THROW(gif.GetRGB(0), CInvalidArgException);
  EXPECT_THROW(gif.DrawPolygon(), CInvalidArgException);
  EXPECT_THROW(gif.Save(), CInvalidArgException);
}

TEST(ColorCacheTest, TakesAnEntryOnFirstUseAndComparesAllFourBytes) {
  ProbeGif gif(5, 5, "");
  EXPECT_EQ(gif.GetRGB(0xFFFFFF), 0);
  EXPECT_EQ(gif.GetRGB(0), 1);
  EXPECT_EQ(gif.GetRGB(0xFF0000), 2);
  EXPECT_EQ(gif.GetRGB(0xFF0000), 2);
  EXPECT_EQ(gif.GetRGB(0x01FF0000), 3);
  EXPECT_EQ(gif.numColors, 4);
  EXPECT_EQ(gif.image->colorsTotal, 4);
  for (const int index : {2, 3}) {
    EXPECT_EQ(gif.image->red[index], 0);
    EXPECT_EQ(gif.image->blue[index], 255);
  }
}

TEST(ColorCacheTest, BeginsAnewWithAFurtherImage) {
  Scene scene;
  const auto page = scene.MakePage(50, 40);
  page->GetRGB(0x0000FF);
  page->ApplyCoords();
  EXPECT_EQ(page->image->colorsTotal, 2);
  EXPECT_EQ(page->GetRGB(0x00FF00), 2);
  EXPECT_EQ(page->image->green[2], 255);
}

TEST(ColorCacheTest, BeyondThePaletteTheClosestEntryIsUsed) {
  ProbeGif gif(5, 5, "");
  for (unsigned long grey = 1; grey < 255; ++grey) gif.GetRGB(grey * 0x010101);
  EXPECT_EQ(gif.numColors, 256);
  EXPECT_EQ(gif.colorIndex[255], 255);
  EXPECT_EQ(gif.GetRGB(0x404140), gif.GetRGB(0x404040));
  EXPECT_EQ(gif.numColors, 257);
  EXPECT_EQ(gif.colorRgb[256], 0x404140U);
  EXPECT_EQ(gif.image->colorsTotal, 256);
}

TEST(PolygonAtWorkTest, IsScaledFilledAndOutlined) {
  ProbeGif gif({0, 0, 1000, -400}, "");
  gif.SetPolygon(MakePolygon({{20, -20}, {60, -20}, {60, -60}, {20, -60}, {-9, -20}}).get());
  EXPECT_EQ(ToText(gif.GetVertices()), "(-4, 10)(10, 10)(30, 10)(30, 30)(10, 30)");
  const Picture expected(500, 200);
  std::vector<gdPoint> points = ForGd(gif.GetVertices());
  gdImageFilledPolygon(expected.get(), points.data(), 5, 2);
  gdImagePolygon(expected.get(), points.data(), 5, 3);
  gif.FillPolygon(0x0000FF);
  gif.DrawOutlinePolygon(0x00FF00);
  EXPECT_EQ(Difference(*gif.image, *expected), "");
  gif.DrawPolygon();
  gdImagePolygon(expected.get(), points.data(), 5, 1);
  gif.SetPixel(499, 199, 0x0000FF);
  gdImageSetPixel(expected.get(), 499, 199, 2);
  gif.SetPixel(500, 0, 0x0000FF);
  gif.SetPixel(-1, 0, 0x0000FF);
  EXPECT_EQ(Difference(*gif.image, *expected), "");
}

// A derived class may write the first 64000 itself.
TEST(PolygonAtWorkTest, HasNoLimitOfVertices) {
  ProbeGif gif({0, 0, 500, -500}, "");
  EXPECT_EQ(gif.points.size(), 64000U);
  CPolygon comb;
  for (int i = 0; i < 70000; ++i) comb.AddPoint(i / 140, i % 2 == 0 ? -100 : -400);
  gif.SetPolygon(&comb);
  EXPECT_EQ(gif.points[69999], (CPoint{499, 400}));
  gif.DrawPolygon();
  EXPECT_EQ(gif.GetPixel(499, 400), 1);
  for (const CPoint& beside : {CPoint{-1, 0}, CPoint{0, -1}, CPoint{500, 0}, CPoint{0, 500}}) {
    EXPECT_EQ(gif.GetPixel(beside.x, beside.y), -1);
  }
  EXPECT_THROW(gif.SetPolygon(std::make_unique<CPolygon>().get()), CInvalidArgException);
  EXPECT_EQ(gif.numPoints, 0);
}

}  // namespace
}  // namespace vexel::test
