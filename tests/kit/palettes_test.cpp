#include "kit/palettes/palettes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <stdexcept>

#include "support/color_vision.h"

namespace vexel::test {
namespace {

// The colours in one text, "#RRGGBB #RRGGBB".
std::string Text(std::span<const std::uint32_t> colors) {
  std::string text;
  for (const std::uint32_t color : colors) text += (text.empty() ? "" : " ") + ColorText(color);
  return text;
}

const Palette& Named(std::string_view name) {
  const Palette* palette = FindPalette(name);
  if (palette == nullptr) throw std::runtime_error("no palette " + std::string(name));
  return *palette;
}

double SmallestDifference(std::span<const std::uint32_t> colors, const Sight& sight) {
  std::vector<Lab> seen;
  for (const std::uint32_t color : colors) {
    seen.push_back(LabOf(Seen(sight, LinearRgbOf(color))));
  }
  double smallest = std::numeric_limits<double>::max();
  for (std::size_t i = 0; i < seen.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) smallest = std::min(smallest, Difference(seen[i], seen[j]));
  }
  return smallest;
}

double SmallestDifference(const Palette& palette, const Sight& sight) {
  double smallest = std::numeric_limits<double>::max();
  for (int count = 2; count <= kMostPaletteClasses; ++count) {
    smallest = std::min(smallest, SmallestDifference(ColorsOf(palette, count), sight));
  }
  return smallest;
}

double Lightness(std::uint32_t color) { return LabOf(LinearRgbOf(color)).lightness; }

TEST(Palettes, AreMarkedColorBlindSafeExactlyWhereAllSightsTellAllClassesApart) {
  for (const Palette& palette : Palettes()) {
    const std::array sights{
        SmallestDifference(palette, kNormal), SmallestDifference(palette, kProtan),
        SmallestDifference(palette, kDeutan), SmallestDifference(palette, kTritan)};
    EXPECT_EQ(palette.colorBlindSafe, *std::min_element(sights.begin(), sights.end()) >= 5.0)
        << palette.name << ' ' << testing::PrintToString(sights);
  }
}

TEST(Palettes, AreOrderedByLightnessAsTheirKindSays) {
  for (const Palette& palette : Palettes()) {
    for (int count = 2; count <= kMostPaletteClasses; ++count) {
      std::vector<double> lightness;
      for (const std::uint32_t color : ColorsOf(palette, count)) {
        lightness.push_back(Lightness(color));
      }
      const auto ascends = [](auto begin, auto end) {
        return std::adjacent_find(begin, end, std::greater_equal<>()) == end;
      };
      const bool isMonotone = ascends(lightness.begin(), lightness.end()) ||
                              ascends(lightness.rbegin(), lightness.rend());
      const auto half = (count + 1) / 2;  // two neutral neighbours may come in either order
      const bool hasLightCentre = ascends(lightness.begin(), lightness.begin() + half) &&
                                  ascends(lightness.rbegin(), lightness.rbegin() + half);
      if (palette.kind == PaletteKind::kSequential) {
        EXPECT_TRUE(isMonotone) << palette.name << ' ' << count;
      } else if (palette.kind == PaletteKind::kDiverging) {
        EXPECT_TRUE(hasLightCentre) << palette.name << ' ' << count;
      }
    }
  }
}

TEST(Palettes, AreFoundByNameInAnyCaseAndOnce) {
  for (const Palette& palette : Palettes()) {
    std::string shouted(palette.name);
    std::transform(shouted.begin(), shouted.end(), shouted.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    EXPECT_EQ(FindPalette(palette.name), &palette);
    EXPECT_EQ(FindPalette(shouted), &palette);
  }
  for (const std::string_view name : {"", "Blu", "Bluess", "RdYlBu "}) {
    EXPECT_EQ(FindPalette(name), nullptr) << name;
  }
}

TEST(Palettes, HaveNoColorsForOtherNumbersOfClasses) {
  for (const int count : {-1, 0, 8, std::numeric_limits<int>::max()}) {
    EXPECT_THROW(ColorsOf(Named("Blues"), count), std::invalid_argument);
  }
}

TEST(CenteredColors, KeepTheNeutralCentreAtTheMidpoint) {
  struct Case {
    int below, above;
    bool middleClass;
    std::string_view colors;
  };
  for (const Case& c : {
           Case{3, 3, false, "#B2182B #EF8A62 #FDDBC7 #D1E5F0 #67A9CF #2166AC"},
           Case{1, 3, false, "#FDDBC7 #D1E5F0 #67A9CF #2166AC"},
           Case{3, 0, false, "#B2182B #EF8A62 #FDDBC7"},
           Case{1, 3, true, "#FDDBC7 #F7F7F7 #D1E5F0 #67A9CF #2166AC"},
           Case{0, 0, true, "#F7F7F7"},
           // Out of a row of 9, whose ends and centre stand in the row of 7, too.
           Case{2, 4, true, "#F9B393 #FCE2D3 #F7F7F7 #DBE9F2 #9FC7E0 #5998C6 #2166AC"},
       }) {
    EXPECT_EQ(Text(CenteredColors(Named("rdbu"), c.below, c.above, c.middleClass)), c.colors);
  }
}

TEST(CenteredColors, RefuseWhatHasNoCentre) {
  struct Case {
    std::string_view name;
    int below, above;
    bool middleClass = false;
  };
  const int most = std::numeric_limits<int>::max();
  for (const Case& c :
       {Case{"Blues", 2, 2}, Case{"spectrum", 2, 2}, Case{"RdBu", 0, 0}, Case{"RdBu", -1, 3},
        Case{"RdBu", 3, -1}, Case{"RdBu", 4, 4}, Case{"RdBu", 4, 3, true},
        Case{"RdBu", most, most, true}, Case{"RdBu", 1, most}}) {
    EXPECT_THROW(CenteredColors(Named(c.name), c.below, c.above, c.middleClass),
                 std::invalid_argument)
        << c.name << ' ' << c.below << ' ' << c.above;
  }
}

TEST(Listing, HasEveryPaletteWithAllItsColors) {
  const std::string text = PalettesText(false);
  EXPECT_EQ(text.find("spectrum  rainbow\nblue      sequential  colour-blind safe\n"), 0U);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), std::ssize(Palettes()));
  // Written by "vexel palettes --json".
  std::ifstream listed(VEXEL_TESTS_DIR "/kit/palettes.json");
  EXPECT_EQ(PalettesJson(), std::string(std::istreambuf_iterator<char>(listed), {}));
}

}  // namespace
}  // namespace vexel::test
