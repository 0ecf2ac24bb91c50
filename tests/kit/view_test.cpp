// From a request to groups, colours and names, and what is said of the result.

#include "kit/view/view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "kit/palettes/palettes.h"
#include "kit/request/error.h"
#include "kit/request/query.h"
#include "kit/view/page.h"
#include "kit/view/shown_bounds.h"
#include "support/files.h"

namespace vexel::test {
namespace {

// A row of squares, one for each value.
class ViewTest : public testing::Test {
 protected:
  // Cells of the table's columns, by row: "1;2".
  void Write(const std::vector<std::string>& rows, int columns = 1) {
    std::string map =
        "[Map]\nVersion=Ortex 3.2\nMapName=Row\nLongLat=No\n[AreaLevels]\nName=Part\n";
    std::string data =
        "[MapDataFile]\nVersion=Ortex 3.2\nMapFile=row\nAreaLevels=1\nVariables=" +
        std::to_string(columns) +
        "\nThousands=Comma\nDecimal=Dot\nNoValue=N/A\nMapLabel=~\n[Data]\nPart\tArea Name";
    for (int i = 0; i < columns; ++i) data += std::string("\t") + static_cast<char>('a' + i);
    data += '\n';
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const std::string left = std::to_string(i);
      const std::string right = std::to_string(i + 1);
      map += "[GeoUnit]\nName=P" + right + "\nAreaStructure=" + right + "\n[Polygon]\n" + left +
             " 0\n" + right + " 0\n" + right + " 1\n" + left + " 1\n";
      std::string cells = rows[i];
      std::replace(cells.begin(), cells.end(), ';', '\t');
      data += right + "\t~\t" + cells + '\n';
    }
    folder.Write("row.map", map);
    folder.Write("row.mdf", data);
  }

  Request Asked(const std::string& query) {
    Request request;
    request.data = folder.Path("row.mdf");
    ReadQuery(request, query);
    return request;
  }

  TempDir folder;
};

std::vector<double> LowersOf(const View& view) {
  std::vector<double> lowers;
  for (int i = 0; i < view.legend.numGroups; ++i) {
    lowers.push_back(view.legend.groups[static_cast<std::size_t>(i)].lower);
  }
  return lowers;
}

std::vector<std::string> NamesOf(const View& view) {
  std::vector<std::string> names;
  for (int i = 0; i < view.legend.numGroups; ++i) {
    names.emplace_back(view.legend.groups[static_cast<std::size_t>(i)].groupName.View());
  }
  return names;
}

std::string Told(const View& view) {
  return std::accumulate(view.notes.begin(), view.notes.end(), std::string(),
                         [](std::string all, const std::string& note) { return all + note + '|'; });
}

struct Case {
  const char* query;
  std::vector<double> lowers;
  const char* told;  // must stand in the notes
};

TEST_F(ViewTest, FindsBoundsInEveryWay) {
  Write({"1", "2", "3", "10", "11", "12", "100", "N/A"});
  const Case cases[] = {
      {"groups=3&intervals=counts", {1, 3, 11}, ""},
      {"groups=3&intervals=widths", {1, 34, 67}, "1 of 3 groups holds no area"},
      {"groups=3&intervals=natural", {1, 10, 100}, ""},
      {"groups=2&intervals=logarithm", {1, 10}, ""},
      {"groups=2&intervals=head-tail", {1, 100}, ""},
      {"groups=3&intervals=round", {1, 50, 100}, "1 of 3 groups holds no area"},
      {"groups=4&intervals=natural&midpoint=11", {1, 10, 11, 100}, ""},
      {"bounds=0,50,200", {1, 50, 200}, "1 of 3 groups holds no area"},
      {"bounds=0,50,50.5", {1, 50, 50.5}, "1 of 3 groups holds no area"},
      {"bounds=0,50,50.000001", {1, 50, 51}, "50.000001 has become 51"},
  };
  for (const Case& each : cases) {
    const View view(Asked(each.query));
    EXPECT_EQ(LowersOf(view), each.lowers) << each.query;
    EXPECT_NE(Told(view).find(each.told), std::string::npos) << each.query << ": " << Told(view);
    EXPECT_EQ(Told(view).empty(), *each.told == '\0') << each.query << ": " << Told(view);
    for (const CMapOb* area : view.areas) {
      const auto value = ValueOf(view, *area);
      const int slot = value ? view.legend.GroupOf(*value).value() : CLegend::kNoDataSlot;
      EXPECT_EQ(area->GetColor(), view.legend.GetRow(slot).group->color) << each.query;
    }
  }
}

TEST_F(ViewTest, SaysWhichValuesAreTooFew) {
  Write({"7", "7", "7"});
  const View equal(Asked("groups=5&intervals=natural"));
  EXPECT_EQ(LowersOf(equal), std::vector<double>{7});
  EXPECT_NE(Told(equal), "");
  Write({"N/A", "N/A"});
  const View none(Asked("groups=5&intervals=natural"));
  EXPECT_NE(Told(none).find("no area on show has a value"), std::string::npos) << Told(none);
}

TEST_F(ViewTest, ShowsBoundsWithTheDecimalsThatTellThemApart) {
  Write({"1", "1", "2", "2", "3", "4"});
  const View view(Asked("groups=4&intervals=logarithm"));
  EXPECT_EQ(view.legend.decimals, 1);
  EXPECT_EQ(view.legend.groups[1].lowerText, "1.5");  // that of 1.41, moved to what is shown
  EXPECT_EQ(view.data.GetVarDecs(0), 0) << "values keep theirs";
}

// The ranges say of each value what its colour says.
TEST_F(ViewTest, LetsRangesHoldTheValuesOfTheirGroups) {
  Write({"3;0.1;0.3", "4;0.2;0.4", "7;0.4;0.5", "7;0.3;0.2", "8;0.9;0.1", "20;0.5;0.5", "1;7;5"},
        3);
  const auto firstGroups = [](const View& view, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
      text += std::string(view.legend.groups[static_cast<std::size_t>(i)].rangeLabel.View()) + '|';
    }
    return text;
  };
  // The mean is 7.14: no area with 7 may stand in a group that begins at "7".
  const View deviation(Asked("groups=2&intervals=deviation"));
  EXPECT_EQ(firstGroups(deviation, 2), "1 to 7|8 to 20|");
  EXPECT_EQ(deviation.legend.groups[0].count, 5);
  EXPECT_EQ(firstGroups(View(Asked("bounds=1,2.5")), 2), "1.0 to 2.4|2.5 to 20.0|");
  EXPECT_EQ(firstGroups(View(Asked("groups=1&intervals=natural")), 1), "1 to 20|");
  EXPECT_EQ(firstGroups(View(Asked("bounds=0")), 1), "1 to 20|");
  // What differs by the noise of a calculation is one value.
  const View noise(Asked("var=3&var2=2&calc=difference&groups=7&midpoint=0.1&intervals=natural"));
  EXPECT_EQ(noise.legend.numGroups, 6);
  EXPECT_EQ(Told(noise).find("runs backwards"), std::string::npos) << Told(noise);
  // The engine's own ways may say otherwise, and that is told.
  Write({"0", "1", "2", "3", "4", "5"});
  EXPECT_NE(Told(View(Asked("groups=4&intervals=widths"))).find("to a neighbouring group"),
            std::string::npos);
  // One group of several that were asked for holds all values.
  Write({"1", "1", "1", "1", "2"});
  EXPECT_EQ(firstGroups(View(Asked("groups=2&same-bounds=a")), 1), "1 to 2|");
}

TEST(ShownBounds, AreRoundedUpUnlessWholeButForNoise) {
  const double lower[] = {0.0, 0.1 + 0.2, 1 / 1.7};
  EXPECT_EQ(MovedToDecimals(lower, 1, 0.0).lower, (std::vector<double>{0, 0.3, 0.6}));
}

TEST_F(ViewTest, GivesZeroARangeOfItsOwn) {
  Write({"-5", "-1", "0", "0", "2", "8", "11"});
  const View view(Asked("groups=4&zero-apart=1&open-ends=1&legend-counts=1"));
  const auto names = NamesOf(view);
  EXPECT_NE(std::find(names.begin(), names.end(), "0 (2)"), names.end());
}

TEST_F(ViewTest, AsksForANumberWhereNamesAreNot) {
  Write({"1;2", "3;4"}, 2);
  std::string data = folder.Read("row.mdf");
  data.replace(data.find("\ta\tb"), 4, "\ta\ta");
  folder.Write("row.mdf", data);
  EXPECT_THROW(View(Asked("var=a")), Error);
  EXPECT_EQ(View(Asked("var=2")).data.GetVar1Selected(), 1);
  try {
    const View view(Asked("var=x"));
    FAIL() << "a variable that is not there";
  } catch (const Error& error) {
    EXPECT_STREQ(error.what(), "--var: there is no variable \"x\"; there are a, a");
  }
}

TEST_F(ViewTest, MakesSeriesCompare) {
  Write({"1;100", "2;200", "3;300", "4;400"}, 2);
  const View first(Asked("var=a&groups=3&intervals=counts&same-bounds=a,b"));
  const View second(Asked("var=2&groups=3&intervals=counts&same-bounds=A,b"));
  for (const View* view : {&first, &second}) {
    const auto lowers = LowersOf(*view);
    ASSERT_EQ(lowers.size(), 3U);
    EXPECT_EQ(std::vector<double>(lowers.begin() + 1, lowers.end()), (std::vector<double>{3, 200}))
        << view->request.variable;
  }
  EXPECT_EQ(second.data.GetVar1Selected(), 1);
}

TEST_F(ViewTest, ColoursGroupsByPalette) {
  Write({"-3", "-2", "-1", "0", "1", "9"});
  const auto colorsOf = [](const View& view) {
    std::vector<std::uint32_t> colors;
    for (int i = 0; i < view.legend.numGroups; ++i) {
      colors.push_back(view.legend.groups[static_cast<std::size_t>(i)].color);
    }
    return colors;
  };
  const auto row = [](std::string_view name, int groups) {
    const auto colors = ColorsOf(*FindPalette(name), groups);
    return std::vector<std::uint32_t>(colors.begin(), colors.end());
  };
  EXPECT_EQ(colorsOf(View(Asked("groups=3&palette=ylgnbu"))), row("YlGnBu", 3));
  EXPECT_EQ(colorsOf(View(Asked("groups=3&palette=YlGnBu&reverse=1"))), Reversed(row("YlGnBu", 3)));
  EXPECT_EQ(colorsOf(View(Asked("groups=3&palette=grey&reverse=1"))), Reversed(row("grey", 3)));
  EXPECT_EQ(colorsOf(View(Asked("colors=%23f00,%230f0"))),
            (std::vector<std::uint32_t>{0x0000FF, 0x00FF00}));
  // Two of the six values lie above 0; a wrong side of the middle would show in the hue.
  const View about(Asked("groups=3&palette=RdBu&midpoint=0.5&intervals=counts"));
  const auto below =
      static_cast<int>(std::lower_bound(LowersOf(about).begin(), LowersOf(about).end(), 0.5) -
                       LowersOf(about).begin());
  EXPECT_EQ(colorsOf(about), CenteredColors(*FindPalette("RdBu"), 2, 1)) << below;
}

TEST_F(ViewTest, NamesGroups) {
  Write({"1", "2", "3", "4", "N/A"});
  const View open(Asked("groups=3&open-ends=1&legend-counts=1"));
  EXPECT_EQ(NamesOf(open),
            (std::vector<std::string>{"less than 2 (1)", "2 to 2 (1)", "3 and more (2)"}));
  EXPECT_EQ(open.legend.groups[CLegend::kNoDataSlot].groupName, "No data (1)");
  EXPECT_EQ(open.legend.useGroupNames, 1);
  const View named(Asked("group-names=low,high&legend-counts=1"));
  EXPECT_EQ(NamesOf(named), (std::vector<std::string>{"low (2)", "high (2)"}));
  EXPECT_EQ(View(Asked("groups=2")).legend.useGroupNames, 0);
  EXPECT_EQ(NamesOf(View(Asked("groups=1&open-ends=1"))), std::vector<std::string>{"1 to 4"});
}

TEST_F(ViewTest, TellsWhatDoesNotFitOrShow) {
  Write({"1", "2"});
  const auto told = [&](const std::string& query) {
    View view(Asked(query));
    const GifPage page(view, "");
    std::string all;
    for (const std::string& note : PageNotes(view, page)) all += note + '|';
    return all;
  };
  EXPECT_EQ(told("groups=2"), "");
  EXPECT_NE(told("size=60x50").find("no room for the map"), std::string::npos);
  EXPECT_NE(told("size=40x400").find("title is too long"), std::string::npos);
  EXPECT_NE(told("groups=2&group-names=%E5%8C%97,b").find("lack letters of \"\u5317\""),
            std::string::npos);
  EXPECT_EQ(told("groups=2&group-names=%3F,b"), "") << "a question mark of the user's";
}

}  // namespace
}  // namespace vexel::test
