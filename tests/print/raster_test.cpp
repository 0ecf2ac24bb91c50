// Pixels of shapes by laws, the picture as a file, and pages in threads.

#include "kit/publish/raster.h"

#include <array>
#include <random>
#include <thread>

#include "kit/publish/compose.h"
#include "kit/publish/coverage.h"
#include "page_pdf.h"
#include "page_png.h"
#include "png_file.h"
#include "print_fixture.h"

namespace vexel::test {
namespace {

constexpr int kSide = 60;
constexpr int kGrid = 10;

void AddRing(Drawing& drawing, const std::vector<GridPoint>& ring) {
  std::vector<GridPoint>& points = drawing.rings.Points();
  points.insert(points.end(), ring.begin(), ring.end());
  drawing.rings.End();
}

Drawing EmptyPage() {
  Drawing drawing;
  drawing.width = kSide;
  drawing.height = kSide;
  drawing.grid = kGrid;
  return drawing;
}

void AddArea(Drawing& drawing, const std::vector<GridPoint>& ring, std::uint16_t fill) {
  AddRing(drawing, ring);
  const auto count = static_cast<std::uint32_t>(drawing.rings.Count());
  drawing.areas.push_back({{count - 1, count}, fill, {}, {}, {}});
}

// A page of crooked squares that leave nothing between them, of three colours without lines.
Drawing Tiles(unsigned seed) {
  constexpr int kTiles = 12;
  constexpr int kTile = kSide * kGrid / kTiles;
  std::mt19937 random(seed);
  Drawing drawing = EmptyPage();
  drawing.background = 0xFFFFFF;
  drawing.fills = {{"a", 0x102030, {}}, {"b", 0x405060, {}}, {"c", 0x708010, {}}};
  std::array<std::array<GridPoint, kTiles + 1>, kTiles + 1> corners;
  for (int y = 0; y <= kTiles; ++y) {
    for (int x = 0; x <= kTiles; ++x) {
      const auto crooked = [&](int at) {
        return at % kTiles == 0 ? at * kTile
                                : at * kTile + static_cast<int>(random() % kTile) - kTile / 2;
      };
      corners[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] = {crooked(x), crooked(y)};
    }
  }
  for (std::size_t y = 0; y < kTiles; ++y) {
    for (std::size_t x = 0; x < kTiles; ++x) {
      AddArea(drawing, {corners[y][x], corners[y][x + 1], corners[y + 1][x + 1], corners[y + 1][x]},
              static_cast<std::uint16_t>(random() % 3));
    }
  }
  return drawing;
}

TEST(Raster, NothingShinesThroughBetweenNeighbours) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    for (const double scale : {1.0, 1.7}) {
      const Drawing drawing = Tiles(seed);
      for (const std::uint32_t pixel : RasterOf(drawing, scale).data) {
        // No part is lighter than the lightest of the three colours has it, but for rounding.
        ASSERT_LE(pixel >> 16 & 0xFFU, 0x60U + 2) << seed;
        ASSERT_LE(pixel >> 8 & 0xFFU, 0x80U + 2) << seed;
        ASSERT_LE(pixel & 0xFFU, 0x70U + 2) << seed;
      }
    }
  }
}

TEST(Raster, LaterAreasLieOverEarlierOnes) {
  Drawing drawing = EmptyPage();
  drawing.fills = {{"a", 0x0000FF, {}}, {"b", 0xFF0000, {}}};
  AddArea(drawing, {{0, 0}, {600, 0}, {600, 600}, {0, 600}}, 0);
  AddArea(drawing, {{105, 100}, {305, 100}, {305, 300}, {105, 300}}, 1);
  Pixels page = RasterOf(drawing, 1.0);
  EXPECT_EQ(page.Row(20)[20], 0xFF0000FFU);
  EXPECT_EQ(page.Row(40)[40], 0xFFFF0000U);
  EXPECT_EQ(page.Row(20)[10], 0xFF7F0080U);  // half of each
}

// Triangles, most of them partly off the page: the sum of all parts is the area on the page, which
// is counted finely.
TEST(Raster, CoversAsMuchAsThereIs) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    std::array<PixelPoint, 3> corners;
    for (PixelPoint& corner : corners) {
      corner = {static_cast<float>(random() % 400) * 0.25F - 20.0F,
                static_cast<float>(random() % 400) * 0.25F - 20.0F};
    }
    Coverage coverage;
    coverage.Begin(kSide, kSide);
    for (std::size_t i = 0; i < 3; ++i) coverage.AddEdge(corners[i], corners[(i + 1) % 3]);
    double sum = 0.0;
    coverage.End([&](int y, int first, int end, std::uint32_t part) {
      ASSERT_TRUE(y >= 0 && y < kSide && first >= 0 && first < end && end <= kSide);
      sum += (end - first) * static_cast<double>(part) / kOpaque;
    });
    const auto side = [&](std::size_t i, double x, double y) {
      const PixelPoint& a = corners[i];
      const PixelPoint& b = corners[(i + 1) % 3];
      return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
    };
    constexpr int kFine = 8;
    int inside = 0;
    for (int y = 0; y < kSide * kFine; ++y) {
      for (int x = 0; x < kSide * kFine; ++x) {
        int positive = 0;
        for (std::size_t i = 0; i < 3; ++i) {
          positive += side(i, (x + 0.5) / kFine, (y + 0.5) / kFine) > 0.0 ? 1 : 0;
        }
        inside += positive == 0 || positive == 3 ? 1 : 0;
      }
    }
    ASSERT_NEAR(sum, inside / static_cast<double>(kFine * kFine), 3.0) << round;
  }
}

TEST(Raster, WindingTwiceIsNoMoreThanOnce) {
  Drawing drawing = EmptyPage();
  drawing.fills = {{"a", 0x0000FF, {}}};
  AddArea(drawing,
          {{100, 100},
           {300, 100},
           {300, 300},
           {100, 300},
           {100, 100},
           {300, 100},
           {300, 300},
           {100, 300}},
          0);
  AddRing(drawing, {{150, 150}, {150, 250}, {250, 250}, {250, 150}});
  AddRing(drawing, {{150, 150}, {150, 250}, {250, 250}, {250, 150}});
  drawing.areas.back().rings.end += 2;
  const Pixels page = RasterOf(drawing, 1.0);
  EXPECT_EQ(page.Row(12)[12], 0xFFFF0000U);
  EXPECT_EQ(page.Row(20)[20], 0U);
}

// Pictures with so many colours, opaque or not.
TEST(PngFile, LosesNothing) {
  constexpr std::size_t kColorType = 25;  // in the file
  for (const std::uint32_t colors : {1U, 2U, 4U, 5U, 16U, 17U, 256U, 257U, 1000U}) {
    for (const bool isOpaque : {true, false}) {
      Pixels pixels{37, 41, {}};
      for (std::uint32_t i = 0; i < 37U * 41U; ++i) {
        const std::uint32_t color = i % colors;
        const std::uint32_t alpha = isOpaque || color % 3 != 0 ? 255 : 0;
        pixels.data.push_back(alpha == 0 && color == 0 ? 0 : 0xFF000000U | color * 4099);
      }
      const std::string file = print::PngBytes(pixels);
      const Picture read = ReadPng(file);
      ASSERT_EQ(read.width, 37);
      for (std::size_t i = 0; i < pixels.data.size(); ++i) {
        const std::uint8_t* const at = read.bytes.data() + 4 * i;
        ASSERT_EQ(std::uint32_t{at[3]} << 24 | std::uint32_t{at[0]} << 16 |
                      std::uint32_t{at[1]} << 8 | at[2],
                  pixels.data[i]);
      }
      EXPECT_EQ(file[kColorType], colors <= 256 ? 3 : isOpaque ? 2 : 6) << colors;
    }
  }
}

TEST(PrintThreads, DrawTheSame) {
  Request request;
  request.data = kSample + ".mdf";
  request.level = 1;
  request.publication.labels = {"State"};
  View view(request);
  const Drawing drawing = Compose(view);
  const std::string png = print::PagePng(drawing, 1.0);
  const std::string pdf = print::PagePdf(drawing, 1.0);
  std::array<std::array<std::string, 2>, 4> pages;
  std::vector<std::thread> threads;
  for (auto& page : pages) {
    threads.emplace_back([&] {
      page = {print::PagePng(drawing, 1.0), print::PagePdf(drawing, 1.0)};
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const auto& [threadPng, threadPdf] : pages) {
    EXPECT_TRUE(threadPng == png);
    EXPECT_TRUE(threadPdf == pdf);
  }
}

}  // namespace
}  // namespace vexel::test
