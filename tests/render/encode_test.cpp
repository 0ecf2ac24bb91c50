#include "render/encode.h"

#include <gd.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

namespace {

struct Picture {
  const char* name;
  int width;
  int height;
  int colors;
  int pattern;  // 0 noise, 1 tiles, 2 specks on white
};

using Image = std::unique_ptr<gdImage, decltype(&gdImageDestroy)>;

Image Paint(const Picture& picture) {
  std::mt19937 random(7);
  const auto below = [&](int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  Image image(gdImageCreate(picture.width, picture.height), &gdImageDestroy);
  for (int i = 0; i < picture.colors; ++i) {
    gdImageColorAllocate(image.get(), below(256), below(256), below(256));
  }
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const int noise = below(picture.colors);
      const int tile = (x / 7 + y / 5) % picture.colors;
      const int speck = below(20) == 0 ? noise : 0;
      gdImageSetPixel(image.get(), x, y,
                      picture.pattern == 0   ? noise
                      : picture.pattern == 1 ? tile
                                             : speck);
    }
  }
  return image;
}

std::string EncodeWithGd(gdImage& image) {
  int size = 0;
  const std::unique_ptr<void, decltype(&gdFree)> bytes(gdImageGifPtr(&image, &size), &gdFree);
  return {static_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
}

class EncodeGif : public testing::TestWithParam<Picture> {};

TEST_P(EncodeGif, GivesTheBytesOfGd) {
  const Image image = Paint(GetParam());
  const auto bytes = vexel::EncodeGif(*image);
  EXPECT_TRUE(std::string(bytes.begin(), bytes.end()) == EncodeWithGd(*image));
}

INSTANTIATE_TEST_SUITE_P(
    Pictures, EncodeGif,
    testing::Values(Picture{"onePixel", 1, 1, 2, 0}, Picture{"oneRow", 70, 1, 2, 0},
                    Picture{"oneColumn", 1, 999, 3, 2}, Picture{"emptyPage", 800, 600, 2, 1},
                    Picture{"twoColorsNoise", 300, 300, 2, 0},
                    Picture{"nineColorsNoise", 122, 300, 9, 0}, Picture{"tiles", 800, 600, 9, 1},
                    Picture{"specks", 800, 600, 9, 2}, Picture{"manyColorsNoise", 400, 300, 256, 0},
                    Picture{"manyColorsSpecks", 400, 300, 200, 2}),
    [](const auto& picture) { return std::string(picture.param.name); });

TEST(EncodeGifTest, MayEndWithABlock) {
  for (int width = 1; width < 300; ++width) {
    const Image image = Paint({"", width, 1, 256, 0});
    const auto bytes = vexel::EncodeGif(*image);
    ASSERT_TRUE(std::string(bytes.begin(), bytes.end()) == EncodeWithGd(*image)) << width;
  }
}

}  // namespace
