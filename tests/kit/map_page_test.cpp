// The web page around a publication page: what its script is given, and that no name breaks it.

#include "kit/report/map_page.h"

#include <gtest/gtest.h>
#include <vexel/brindle/text.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include "kit/publish/compose.h"
#include "kit/publish/svg.h"
#include "kit/request/markup.h"
#include "kit/request/query.h"
#include "support/files.h"

namespace vexel::test {
namespace {

using Json = nlohmann::json;

std::size_t CountOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

// Regions, a row each, of squares, a name each.
class MapPageTest : public testing::Test {
 protected:
  void Write(const std::vector<std::vector<std::string>>& regions) {
    std::string map =
        "[Map]\nVersion=Ortex 3.2\nMapName=Rows\nLongLat=No\n"
        "[AreaLevels]\nName=Region\nName=Part\n";
    std::string data =
        "[MapDataFile]\nVersion=Ortex 3.2\nMapFile=rows\nAreaLevels=2\nVariables=1\n"
        "Thousands=Comma\nDecimal=Dot\nNoValue=N/A\nMapLabel=~\n"
        "[Data]\nRegion\tPart\tArea Name\ta\n";
    for (std::size_t row = 0; row < regions.size(); ++row) {
      const std::string key = std::to_string(row + 1);
      const int columns = static_cast<int>(regions[row].size());
      map.append("[GeoGroup]\nName=Region ").append(key).append("\nAreaStructure=").append(key);
      map += Square(0, static_cast<int>(row), columns);
      for (int i = 0; i < columns; ++i) {
        const std::string own = key + ", " + std::to_string(i + 1);
        map.append("[GeoUnit]\nName=").append(regions[row][static_cast<std::size_t>(i)]);
        map.append("\nAreaStructure=").append(own).append(Square(i, static_cast<int>(row), 1));
        data.append(key).append("\t").append(std::to_string(i + 1)).append("\t~\t");
        data.append(ValueFor(i)).append("\n");
      }
      map += "[EndGroup]\n";
    }
    folder_.Write("rows.map", map);
    folder_.Write("rows.mdf", data);
  }

  std::string Page(const std::string& query = "", const std::string& picture = "page.svg") {
    Request request;
    request.data = folder_.Path("rows.mdf");
    request.level = 2;
    ReadQuery(request, query);
    view_ = std::make_unique<View>(request);
    drawing_ = Compose(*view_);
    return MapPageText(*view_, drawing_, picture);
  }

  static Json DataOf(const std::string& page) {
    constexpr std::string_view kBegin = "<script type=\"application/json\" id=\"data\">";
    const std::size_t begin = page.find(kBegin) + kBegin.size();
    return Json::parse(page.substr(begin, page.find("</script>", begin) - begin));
  }

  std::unique_ptr<View> view_;
  Drawing drawing_;

 private:
  // Values that are not sorted as their texts would be, some twice and some missing.
  static std::string ValueFor(int i) {
    return i % 7 == 6 ? "N/A" : std::to_string(1500 * (i % 5) - 200);
  }

  static std::string Square(int column, int row, int columns) {
    const auto point = [](int x, int y) {
      return std::to_string(x) + ' ' + std::to_string(y) + '\n';
    };
    return "\n[Polygon]\n" + point(column, row) + point(column + columns, row) +
           point(column + columns, row + 1) + point(column, row + 1);
  }

  TempDir folder_;
};

TEST_F(MapPageTest, TellsEachAreaOnce) {
  Write({std::vector<std::string>(9, "A"), {"B"}, {"C", "D"}});
  const std::string page = Page();
  EXPECT_EQ(page, Page()) << "the same bytes again";
  const Json data = DataOf(page);
  const std::string svg = SvgText(drawing_);
  ASSERT_EQ(data["keys"].size(), 12U);
  EXPECT_EQ(data["keys"].get<std::set<std::string>>().size(), 12U);
  EXPECT_EQ(data["parentTexts"], (Json{"Region 1", "Region 2", "Region 3"}));
  EXPECT_EQ(data["valueTexts"], (Json{"-200", "1,300", "2,800", "4,300", "5,800"}));
  for (std::size_t i = 0; i < 12; ++i) {
    const AreaShape& area = drawing_.areas[i];
    const std::string key = data["keys"][i];
    const Json& value = data["values"][i];
    EXPECT_EQ(data["names"][i], drawing_.Of(area.name));
    EXPECT_EQ(data["parentTexts"].at(data["parents"][i].get<std::size_t>()),
              "Region " + key.substr(0, 1));
    EXPECT_EQ(value.is_null() ? data["missing"] : data["valueTexts"].at(value.get<std::size_t>()),
              drawing_.Of(area.value));
    EXPECT_EQ(data["slots"][i], area.fill);
    EXPECT_EQ(CountOf(svg, " data-key=\"" + key + "\" d=\"" +
                               data["outlines"][i].get<std::string>() + "\">"),
              1U);
  }
  EXPECT_EQ(CountOf(page, "<tr data-slot="), view_->legend.GetRows().size());
  EXPECT_NE(page.find("<tr data-slot=\"7\" data-veil=\"dim\">"), std::string::npos)
      << "white on white";
}

TEST_F(MapPageTest, TakesAnyText) {
  const std::vector<std::string> texts = {
      "</script><script>alert(1)</script>", "<!-- <script>", "]]> & \"double\" 'single' \\",
      "\u05E9\u05DC\u05D5\u05DD",           "Ca\xF1on \x01", "$TITLE$ \u2028"};
  Write({texts});
  const std::size_t scripts = CountOf(Page(), "<script");
  for (const std::string& text : texts) {
    const std::string page =
        Page("title=" + PercentEncoded(text) + "&group-names=" + PercentEncoded(text) + ",b,c,d,e",
             "of \"rows\"/a<b>.svg");
    EXPECT_EQ(CountOf(page, "<script"), scripts) << text;
    EXPECT_EQ(CountOf(page, "</script"), scripts) << text;
    EXPECT_EQ(page.find("<!--"), std::string::npos) << text;
    EXPECT_TRUE(IsUtf8(page)) << text;
    EXPECT_TRUE(std::none_of(page.begin(), page.end(), [](unsigned char byte) {
      return byte < ' ' && byte != '\n';
    })) << text;
    EXPECT_NE(page.find("<title>" + MarkupText(XmlText(text)) + "</title>"), std::string::npos);
    EXPECT_NE(page.find("src=\"of%20%22rows%22/a%3Cb%3E.svg\""), std::string::npos);
    const Json names = DataOf(page)["names"];
    ASSERT_EQ(names.size(), texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_EQ(names[i], XmlText(texts[i]));
    for (const std::string& name : texts) {
      EXPECT_NE(page.find("<bdi>" + MarkupText(XmlText(name)) + "</bdi></th>"), std::string::npos);
    }
  }
}

// Beside an area's own texts stands next to nothing, and rows only where they are few.
TEST_F(MapPageTest, StaysSmall) {
  for (const std::size_t count : {500U, 501U, 5000U}) {
    const std::size_t half = count / 2;
    Write({std::vector<std::string>(half, "A name"),
           std::vector<std::string>(count - half, "Another name")});
    const std::string page = Page();
    const bool hasRows = count <= 500;
    EXPECT_EQ(CountOf(page, "<tr><th scope=\"row\">"), hasRows ? count : 0U);
    EXPECT_EQ(CountOf(page, "<details id=\"table\" data-rows=\"100\" hidden>"), hasRows ? 0U : 1U);
    if (hasRows) continue;
    std::string outlines;
    for (const AreaShape& area : drawing_.areas) AppendPath(outlines, drawing_, area.rings);
    constexpr std::size_t kFixed = 40000;
    constexpr std::size_t kBeside = 20;
    EXPECT_LE(page.size(), kFixed + drawing_.words.size() + outlines.size() + kBeside * count);
  }
}

}  // namespace
}  // namespace vexel::test
