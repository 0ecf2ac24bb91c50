// What the tests of `vexel-print` share: a folder to work in, pictures, and how far two of them are
// apart.

#ifndef VEXEL_TESTS_PRINT_PRINT_FIXTURE_H_
#define VEXEL_TESTS_PRINT_PRINT_FIXTURE_H_

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/cli_fixture.h"

namespace vexel::test {

// Decoded, four bytes for each pixel: red, green, blue, opacity.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> bytes;

  int At(int x, int y, int part) const {
    return bytes[static_cast<std::size_t>((y * width + x) * 4 + part)];
  }
};

// Empty for bytes that are no PNG.
inline Picture ReadPng(std::string_view file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&image, file.data(), file.size()) == 0) return {};
  image.format = PNG_FORMAT_RGBA;
  Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
  picture.bytes.resize(PNG_IMAGE_SIZE(image));
  if (png_image_finish_read(&image, nullptr, picture.bytes.data(), 0, nullptr) == 0) return {};
  return picture;
}

// How far two pictures are apart, of 255: on average, and the share of the pixels that are far off
// in some colour.
struct Distance {
  double mean = 255.0;
  double farOff = 1.0;
};

inline Distance DistanceOf(const Picture& a, const Picture& b) {
  constexpr int kFar = 64;
  if (a.bytes.empty() || a.width != b.width || a.height != b.height) return {};
  std::size_t sum = 0;
  std::size_t farOff = 0;
  for (std::size_t i = 0; i < a.bytes.size(); i += 4) {
    int most = 0;
    for (std::size_t part = i; part < i + 4; ++part) {
      const int difference = std::abs(a.bytes[part] - b.bytes[part]);
      sum += static_cast<std::size_t>(difference);
      most = std::max(most, difference);
    }
    farOff += most > kFar ? 1 : 0;
  }
  const auto count = static_cast<double>(a.bytes.size());
  return {static_cast<double>(sum) / count, static_cast<double>(farOff) * 4.0 / count};
}

// The picture with each square of so many pixels a side as one.
inline Picture Shrunk(const Picture& picture, int side) {
  Picture small{picture.width / side, picture.height / side, {}};
  for (int y = 0; y < small.height; ++y) {
    for (int x = 0; x < small.width; ++x) {
      for (int part = 0; part < 4; ++part) {
        int sum = side * side / 2;
        for (int i = 0; i < side * side; ++i) {
          sum += picture.At(x * side + i % side, y * side + i / side, part);
        }
        small.bytes.push_back(static_cast<std::uint8_t>(sum / (side * side)));
      }
    }
  }
  return small;
}

class Print : public Cli {
 protected:
  // Draws a page that must come out. `page` names it; the ending tells the medium.
  std::string Draw(const std::string& arguments, const std::string& page) const {
    const RunResult done = Call("render " + arguments + " --quiet -o " + page);
    EXPECT_EQ(done.status, 0) << done.err;
    return folder.Read(page);
  }

  // Runs a program of the system in the folder and gives what it wrote to standard output.
  std::string Tool(const std::string& command) const {
    RunOptions options;
    options.folder = folder.Path("");
    const RunResult done = RunProgram("/usr/bin/env", Cut(command, ' '), options);
    EXPECT_EQ(done.status, 0) << command << ": " << done.err;
    return done.out;
  }

  Picture RasterizeSvg(const std::string& svg) const {
    folder.Write("raster.svg", svg);
    return ReadPng(Tool("rsvg-convert raster.svg"));
  }

  // By way of three times the pixels a side, since thin lines come out thicker than they are.
  Picture RasterizePdf(const std::string& pdf) const {
    folder.Write("raster.pdf", pdf);
    Tool("pdftoppm -png -r 288 -singlefile raster.pdf raster");
    return Shrunk(ReadPng(folder.Read("raster.png")), 3);
  }
};

inline const std::string kCountyPage =
    kSample + ".mdf --level 2 --var 4 --palette YlGnBu --size 800x600";

}  // namespace vexel::test

#endif  // VEXEL_TESTS_PRINT_PRINT_FIXTURE_H_
