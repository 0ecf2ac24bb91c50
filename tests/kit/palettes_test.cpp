#include "kit/palettes/palettes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <limits>
#include <stdexcept>

#include "legend/palettes.h"
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

TEST(Palettes, HaveThePublishedColors) {
  struct Case {
    std::string_view name;
    int count;
    std::string_view colors;
  };
  for (const Case& c : {
           Case{"YlGnBu", 1, "#2C7FB8"},
           Case{"YlGnBu", 2, "#EDF8B1 #2C7FB8"},
           Case{"YlGnBu", 5, "#FFFFCC #A1DAB4 #41B6C4 #2C7FB8 #253494"},
           Case{"Blues", 4, "#EFF3FF #BDD7E7 #6BAED6 #2171B5"},
           Case{"OrRd", 7, "#FEF0D9 #FDD49E #FDBB84 #FC8D59 #EF6548 #D7301F #990000"},
           Case{"RdBu", 1, "#F7F7F7"},
           Case{"RdBu", 2, "#EF8A62 #67A9CF"},
           Case{"PuOr", 3, "#F1A340 #F7F7F7 #998EC3"},
           Case{"Spectral", 6, "#D53E4F #FC8D59 #FEE08B #E6F598 #99D594 #3288BD"},
           Case{"Viridis", 1, "#21918C"},
           Case{"Viridis", 4, "#440154 #31688E #35B779 #FDE725"},
           Case{"Cividis", 3, "#002051 #7F7C75 #FDEA45"},
       }) {
    EXPECT_EQ(Text(ColorsOf(Named(c.name), c.count)), c.colors) << c.name << ' ' << c.count;
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

TEST(Palettes, OfTheEngineHaveItsColors) {
  int number = 0;
  for (const std::string_view name : {"spectrum", "blue", "green", "red", "yellow", "grey"}) {
    EXPECT_EQ(Named(name).engineNumber, number);
    EXPECT_EQ(Text(ColorsOf(Named(name), 6)), Text(PaletteColors(number, 6)));
    ++number;
  }
  EXPECT_EQ(number, kNumFixedPalettes);
  EXPECT_EQ(Text(ColorsOf(Named("red"), 2)), "#FFC0C0 #FF0000");
}

TEST(Palettes, HaveNoColorsForOtherNumbersOfClasses) {
  for (const std::string_view name : {"blue", "Blues"}) {
    for (const int count : {-1, 0, 8, std::numeric_limits<int>::max()}) {
      EXPECT_THROW(ColorsOf(Named(name), count), std::invalid_argument);
    }
  }
}

TEST(Palettes, CanBeReversed) {
  EXPECT_EQ(Text(Reversed(ColorsOf(Named("Blues"), 3))), "#3182BD #9ECAE1 #DEEBF7");
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

// Whatever the shares, the classes next to the midpoint are the lightest, and both sides have the
// same colour at the same distance as when they are equally long.
TEST(CenteredColors, AreTheInnerPartOfTheEvenShare) {
  for (int longer = 1; longer <= 7; ++longer) {
    const auto upper = CenteredColors(Named("PuOr"), 0, longer);
    const auto lower = CenteredColors(Named("PuOr"), longer, 0);
    for (int shorter = 0; shorter <= std::min(longer, 7 - longer); ++shorter) {
      const auto colors = CenteredColors(Named("PuOr"), shorter, longer);
      const auto inner = std::span(lower).last(static_cast<std::size_t>(shorter));
      EXPECT_EQ(Text(colors), Text(inner) + (shorter == 0 ? "" : " ") + Text(upper));
    }
    EXPECT_EQ(ColorText(upper.back()),
              ColorText(ColorsOf(Named("PuOr"), std::min(2 * longer, 7)).back()));
    EXPECT_TRUE(std::is_sorted(upper.rbegin(), upper.rend(),
                               [](auto x, auto y) { return Lightness(x) < Lightness(y); }));
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

bool Has(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

TEST(Listing, HasALineForEachPalette) {
  const std::string plain = PalettesText(false);
  EXPECT_EQ(plain.find("spectrum  rainbow\nblue      sequential  colour-blind safe\n"), 0U);
  EXPECT_EQ(static_cast<std::size_t>(std::count(plain.begin(), plain.end(), '\n')),
            Palettes().size());
  EXPECT_FALSE(Has(plain, "\x1B"));
  EXPECT_TRUE(Has(PalettesText(true),
                  "\n\x1B[48;2;239;243;255m  \x1B[48;2;198;219;239m  \x1B[48;2;158;202;225m  "
                  "\x1B[48;2;107;174;214m  \x1B[48;2;66;146;198m  \x1B[48;2;33;113;181m  "
                  "\x1B[48;2;8;69;148m  \x1B[0m  Blues     sequential\n"));
}

TEST(Listing, IsJson) {
  const std::string json = PalettesJson();
  EXPECT_EQ(json.find(R"({
  "palettes": [
    {
      "name": "spectrum",
      "kind": "rainbow",
      "colorBlindSafe": false,
      "colors": {
        "1": ["#0000FF"],
        "2": ["#0000FF", "#FF0000"],
)"),
            0U);
  EXPECT_TRUE(Has(json, R"("#3288BD"]
      }
    }
  ]
}
)"));
}

}  // namespace
}  // namespace vexel::test
