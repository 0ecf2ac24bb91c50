// The report, the web page and the located areas, against the text of the data file and the
// picture.

#include <gd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <random>
#include <regex>
#include <set>

#include "cli_fixture.h"

namespace vexel::test {
namespace {

using Key = std::vector<int>;
using Value = std::optional<double>;

// The columns of the counties, straight from the text.
const std::map<Key, std::vector<Value>>& Counties() {
  static const std::map<Key, std::vector<Value>> counties = [] {
    std::map<Key, std::vector<Value>> read;
    std::ifstream file(kSample + ".mdf");
    for (std::string line; std::getline(file, line);) {
      const std::vector<std::string> cells = Cut(line, '\t');
      if (cells.size() != 9 || cells[0] == "State" || cells[1] == "X") continue;
      std::vector<Value>& row = read[{std::stoi(cells[0]), std::stoi(cells[1])}];
      for (std::size_t i = 3; i < cells.size(); ++i) {
        row.push_back(cells[i] == "N/A" ? Value() : std::stod(cells[i]));
      }
    }
    return read;
  }();
  return counties;
}

std::vector<double> SortedRates() {
  std::vector<double> rates;
  for (const auto& [key, row] : Counties()) {
    if (row[3]) rates.push_back(*row[3]);
  }
  std::sort(rates.begin(), rates.end());
  return rates;
}

// Checks a report against the bounds of groups and the values of all counties.
void ExpectGroups(const Json& report, const std::vector<double>& bounds,
                  const std::map<Key, Value>& values) {
  const Json& groups = report["legend"]["groups"];
  ASSERT_EQ(groups.size(), bounds.size());
  std::vector<double> lowers;
  std::set<std::string> colors;
  for (std::size_t i = 0; i < bounds.size(); ++i) {
    EXPECT_NEAR(groups[i]["lower"].get<double>(), bounds[i], 1e-9) << i;
    lowers.push_back(groups[i]["lower"]);
    colors.insert(groups[i]["color"].get<std::string>());
  }
  EXPECT_EQ(colors.size(), bounds.size());
  ASSERT_EQ(report["areas"].size(), values.size());
  std::vector<int> counts(bounds.size());
  int missing = 0;
  for (const Json& area : report["areas"]) {
    const Value value = values.at(area["key"].get<Key>());
    if (!value) {
      ++missing;
      EXPECT_TRUE(area["value"].is_null() && area["group"].is_null()) << area;
      EXPECT_EQ(area["color"], report["legend"]["missing"]["color"]) << area;
      continue;
    }
    const auto above = std::upper_bound(lowers.begin(), lowers.end(), *value);
    const auto group = static_cast<std::size_t>(above - lowers.begin()) - 1;
    ++counts.at(group);
    ASSERT_FALSE(area["value"].is_null()) << area;
    EXPECT_EQ(area["value"].get<double>(), *value) << area;
    EXPECT_EQ(area["group"], group) << area;
    EXPECT_EQ(area["color"], groups[group]["color"]) << area;
  }
  for (std::size_t i = 0; i < counts.size(); ++i) EXPECT_EQ(groups[i]["count"], counts[i]) << i;
  EXPECT_EQ(report["legend"]["missing"]["count"], missing);
}

std::map<Key, Value> Rates() {
  std::map<Key, Value> rates;
  for (const auto& [key, row] : Counties()) rates[key] = row[3];
  return rates;
}

constexpr std::size_t kGroups = 6;
const std::string kRatePage = kSample + ".mdf --level 2 --var 4";

TEST_F(Cli, ReportsGroupsOfEqualCounts) {
  const std::vector<double> sorted = SortedRates();
  std::vector<double> bounds;
  for (std::size_t i = 0; i < kGroups; ++i) bounds.push_back(sorted[i * sorted.size() / kGroups]);
  const Json report = Report(kRatePage + " --groups 6");
  ExpectGroups(report, bounds, Rates());
  // Each label ends a tenth below where the next begins, the last with the highest rate.
  for (std::size_t i = 0; i < kGroups; ++i) {
    const double upper = i + 1 < kGroups ? bounds[i + 1] - 0.1 : sorted.back();
    std::ostringstream label;
    label << std::fixed;
    label.precision(1);
    label << bounds[i] << " to " << upper;
    EXPECT_EQ(report["legend"]["groups"][i]["label"], label.str());
  }
  EXPECT_EQ(report["variable"]["name"], "Unemployment rate 2009");
  EXPECT_EQ(report["variable"]["column"], 4);
  EXPECT_TRUE(report["variable"]["calculation"].is_null());
}

TEST_F(Cli, ReportsGroupsOfEqualWidths) {
  const std::vector<double> sorted = SortedRates();
  const double width = (sorted.back() - sorted.front()) / kGroups;
  std::vector<double> bounds;
  for (std::size_t i = 0; i < kGroups; ++i) {
    bounds.push_back(sorted.front() + width * static_cast<double>(i));
  }
  ExpectGroups(Report(kRatePage + " --groups 6 --intervals widths --palette green --reverse"),
               bounds, Rates());
}

TEST_F(Cli, ReportsGroupsBetweenOwnBounds) {
  // The lowest group reaches down to the lowest rate, and begins there.
  ExpectGroups(Report(kRatePage + " --bounds 0,4.5,8,12 --palette spectrum"),
               {SortedRates().front(), 4.5, 8, 12}, Rates());
}

struct Calculation {
  std::string name;
  double (*formula)(double x, double y);
};

void PrintTo(const Calculation& calculation, std::ostream* to) { *to << calculation.name; }

class CliCalculation : public Cli, public testing::WithParamInterface<Calculation> {};

TEST_P(CliCalculation, IsThatOfTheColumns) {
  std::map<Key, Value> values;
  std::vector<double> sorted;
  for (const auto& [key, row] : Counties()) {
    const Value x = row[4];
    const Value y = row[5];
    values[key] = x && y ? Value(GetParam().formula(*x, *y)) : Value();
    if (values[key]) sorted.push_back(*values[key]);
  }
  std::sort(sorted.begin(), sorted.end());
  const Json report =
      Report(kSample + ".mdf --level 2 --var 5 --var2 6 --groups 3 --calc " + GetParam().name);
  ExpectGroups(report, {sorted[0], sorted[sorted.size() / 3], sorted[sorted.size() * 2 / 3]},
               values);
  EXPECT_EQ(report["variable"]["calculation"], GetParam().name);
}

const Calculation kCalculations[] = {
    {"percent-change", [](double x, double y) { return (x - y) * 100 / y; }},
    {"percent", [](double x, double y) { return x * 100 / y; }},
    {"ratio", [](double x, double y) { return x / y; }},
    {"difference", [](double x, double y) { return x - y; }},
};
INSTANTIATE_TEST_SUITE_P(All, CliCalculation, testing::ValuesIn(kCalculations));

TEST_F(Cli, TellsTheGroupsUnlessQuiet) {
  folder.Write("lost.mdf", DataFor("land", kLandRows + "8\t9\tAtlantis\t7\t7\n"));
  const RunResult done = Call("render lost.mdf --level 2 --groups 2 -o page.gif");
  EXPECT_EQ(done.status, 0);
  EXPECT_EQ(done.out, "");
  for (const char* part : {"10", "50", "1 area", "8, 9", "Atlantis"}) {
    EXPECT_NE(done.err.find(part), std::string::npos) << part << " in " << done.err;
  }
  EXPECT_EQ(Call("render lost.mdf --level 2 -o page.gif --quiet").err, "");
}

// How many area elements a page has for each key of two codes.
std::map<std::string, int> AreaLines(const std::string& html) {
  std::map<std::string, int> lines;
  const std::regex element(R"(<area [^>]*&A0=(\d+)&A1=(\d+)&)");
  for (std::sregex_iterator at(html.begin(), html.end(), element), end; at != end; ++at) {
    ++lines[(*at)[1].str() + ',' + (*at)[2].str()];
  }
  return lines;
}

TEST_F(Cli, WritesAPageWithEveryAreaAndPolygon) {
  for (const char* name : {"pictures", "pages"}) {
    std::filesystem::create_directory(folder.Path(name));
  }
  const RunResult done =
      Call("render land.mdf --level 2 -o pictures/a.gif --html pages/a.html --quiet");
  ASSERT_EQ(done.status, 0) << done.err;
  const std::string html = folder.Read("pages/a.html");
  EXPECT_EQ(AreaLines(html), (std::map<std::string, int>{{"1,1", 2}, {"1,2", 1}, {"2,1", 1}}));
  EXPECT_EQ(CountOf(html, "<area "), 4U);
  EXPECT_EQ(CountOf(html.substr(html.rfind("<tbody>")), "<tr"), 3U);
  EXPECT_NE(html.find("Tom &amp; &quot;Jerry&quot; &lt;b&gt;\u00FC"), std::string::npos);
  EXPECT_EQ(html.find("<b>\u00FC"), std::string::npos);
  EXPECT_NE(html.find("src=\"../pictures/a.gif\""), std::string::npos);
  EXPECT_EQ(folder.List(), (std::vector<std::string>{"land.map", "land.mdf", "pages", "pictures"}));
}

// A page says that it is UTF-8, whatever the bytes of a name are.
TEST_F(Cli, WritesAPageOfCharactersOnly) {
  std::string map(kLandMap);
  map.replace(map.find("Bare"), 4, "Ca\xF1on \u5317");
  folder.Write("land.map", map);
  ASSERT_EQ(Call("render land.mdf --level 2 -o a.gif --html a.html --quiet").status, 0);
  const std::string html = folder.Read("a.html");
  EXPECT_EQ(html.find('\xF1'), std::string::npos);
  EXPECT_NE(html.find("<th scope=\"row\">Ca\uFFFDon \u5317</th>"), std::string::npos);
}

// Only the counties of the state on show are painted and have links.
TEST_F(Cli, ZoomedPageShowsTheAreaAlone) {
  const std::string sample = VEXEL_SAMPLES_DIR "/us-conus.mdf";
  ASSERT_EQ(Call("render " + sample + " --zoom 16 -o a.gif --html a.html").status, 0);
  EXPECT_EQ(CountOf(folder.Read("a.html"), "<area shape"), 44U);
}

TEST_F(Cli, ReportsNamesAsTheyAre) {
  const Json report = Report("land.mdf --level 2 --zoom 1");
  ASSERT_EQ(report["areas"].size(), 2U);
  EXPECT_EQ(report["areas"][0]["name"], "Tom & \"Jerry\" <b>\u00FC");
  EXPECT_EQ(report["view"]["root"], Json::array({1}));
  EXPECT_EQ(report["map"]["levels"], (Json{"Region", "District"}));
}

std::string ColorAt(gdImagePtr picture, int x, int y) {
  const int color = gdImageGetPixel(picture, x, y);
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%02X%02X%02X",
                static_cast<unsigned>(gdImageRed(picture, color)) & 0xFFU,
                static_cast<unsigned>(gdImageGreen(picture, color)) & 0xFFU,
                static_cast<unsigned>(gdImageBlue(picture, color)) & 0xFFU);
  return text.data();
}

using Picture = std::unique_ptr<gdImage, void (*)(gdImagePtr)>;

Picture ReadPicture(std::string bytes) {
  return {gdImageCreateFromGifPtr(static_cast<int>(bytes.size()), bytes.data()), &gdImageDestroy};
}

// On a line the area that is painted last counts; a hole is no part of the area that fills it.
TEST_F(Cli, LocatesWhatLiesUppermost) {
  std::string map(kLandMap);
  map.insert(map.rfind("[EndGroup]"),
             "[Polygon]\nHole\n10 60\n30 60\n30 90\n10 90\n\n"
             "[Polygon]\nHole\n10 10\n30 10\n30 40\n10 40\n\n");
  folder.Write("land.map", map);
  const std::vector<int> box = Report("land.mdf --level 2")["page"]["map"];
  const Picture picture = ReadPicture(folder.Read("page.gif"));
  ASSERT_NE(picture, nullptr);
  const auto columnOf = [&](int x) { return box[0] + x * (box[2] - box[0]) / 100; };
  const auto rowOf = [&](int y) { return box[3] - y * (box[3] - box[1]) / 100; };
  const auto keyAt = [&](int column, int row, const std::string& options) {
    const RunResult done = Call("locate land.mdf --level 2 " + options + std::to_string(column) +
                                ',' + std::to_string(row));
    return done.out.substr(0, done.out.find('\t'));
  };
  int line = columnOf(37);
  while (line < columnOf(43) && ColorAt(picture.get(), line, rowOf(75)) != "#000000") ++line;
  EXPECT_EQ(keyAt(line - 1, rowOf(75), ""), "1,1");
  EXPECT_EQ(keyAt(line, rowOf(75), ""), "1,2");
  EXPECT_EQ(keyAt(line, rowOf(75), "--outline 1,1 "), "1,1");
  EXPECT_EQ(keyAt(line + 1, rowOf(75), "--outline 1,1 "), "1,2");
  EXPECT_EQ(keyAt(columnOf(20), rowOf(75), ""), "1,1");
  EXPECT_EQ(keyAt(columnOf(20), rowOf(25), ""), "");
  EXPECT_EQ(keyAt(columnOf(60), rowOf(25), ""), "2,1");
}

class CliLocate : public Cli, public testing::WithParamInterface<std::string> {};

TEST_P(CliLocate, AgreesWithThePicture) {
  const std::string view = kSample + ".mdf --var 4 --no-title --palette spectrum " + GetParam();
  const Json report = Report(view);
  std::map<Key, std::string> colors;
  for (const Json& area : report["areas"]) colors[area["key"].get<Key>()] = area["color"];
  const Picture picture = ReadPicture(folder.Read("page.gif"));
  ASSERT_NE(picture, nullptr);

  const std::vector<int> map = report["page"]["map"];
  std::mt19937 random(7);
  const auto between = [&](int from, int to) {
    return from + static_cast<int>(random() % static_cast<unsigned>(to - from));
  };
  int found = 0;
  for (int tried = 0; tried < 15;) {
    const int x = between(map[0], map[2]);
    const int y = between(map[1], map[3]);
    const std::string color = ColorAt(picture.get(), x, y);
    if (color == "#000000") continue;
    ++tried;
    const std::string pixel = std::to_string(x) + ',' + std::to_string(y);
    const RunResult done = Call("locate " + view + " --json " + pixel);
    if (done.status == 0) {
      ++found;
      EXPECT_EQ(color, colors.at(Json::parse(done.out)["key"].get<Key>())) << pixel << done.out;
    } else {
      EXPECT_EQ(done.status, 1) << pixel << done.err;
      EXPECT_EQ(color, "#FFFFFF") << pixel;
    }
  }
  EXPECT_GE(found, 5);
}

INSTANTIATE_TEST_SUITE_P(Views, CliLocate,
                         testing::Values("--level 1", "--level 2 --zoom 48 --size 1000x900"));

}  // namespace
}  // namespace vexel::test
