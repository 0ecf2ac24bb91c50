// The pieces of pages about a view: nothing is counted twice or lost, and no text breaks the
// markup.

#include <expat.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <set>

#include "kit/publish/fills.h"
#include "kit/request/fold.h"
#include "kit/request/markup.h"
#include "kit/request/query.h"
#include "kit/request/values.h"
#include "kit/site/area_table.h"
#include "kit/site/histogram.h"
#include "kit/site/pieces.h"
#include "support/files.h"

namespace vexel::test {
namespace {

View& Counties() {
  static View view([] {
    Request request;
    request.data = VEXEL_SAMPLES_DIR "/us-counties.mdf";
    return request;
  }());
  return view;
}

View& Counties(const std::string& query) {
  Request request;
  ReadQuery(request, query);
  Counties().Show(request);
  return Counties();
}

// Queries of all kinds of classes.
std::string RandomQuery(std::mt19937& random) {
  const auto one = [&](std::initializer_list<const char*> texts) {
    return std::string(texts.begin()[random() % texts.size()]);
  };
  return "var=" + std::to_string(random() % 6 + 1) +
         one({"&level=1", "&level=2", "&level=2&zoom=48", "&level=2&zoom=2"}) +
         "&groups=" + std::to_string(random() % 7 + 1) +
         one({"", "&intervals=natural", "&intervals=deviation", "&groups=3&bounds=7,12,500",
              "&zero-apart"});
}

TEST(Fold, FindsNamesAsTheyAreTyped) {
  const std::map<std::string, std::string> folded{
      {"Do\u00F1a ANA", "dona ana"},
      {"\u0141\u00F3d\u017A", "lodz"},
      {"STRA\u00DFE", "stra\u00DFe"},
      {"\u00C6r\u00F8", "\u00E6ro"},
      {"\u0152uvre \u00D7", "\u0153uvre \u00D7"},
      {"\u041C\u041E\u0421\u041A\u0412\u0410 \u0401",
       "\u043C\u043E\u0441\u043A\u0432\u0430 \u0451"},
      {"\u0391\u03B8\u03AE\u03BD\u03B1", "\u03B1\u03B8\u03AE\u03BD\u03B1"},
      {"\u6771\u4EAC \U0001F5FA", "\u6771\u4EAC \U0001F5FA"},
      {"a\xFF", "a\uFFFD"}};
  for (const auto& [text, wanted] : folded) {
    EXPECT_EQ(Folded(text), wanted);
    EXPECT_EQ(Folded(wanted), wanted) << "once is enough";
  }
  const std::vector<std::string> ascending{"area 0",       "Area 2",           "area 002b",
                                           "\u00C1rea 10", "Area 10000000000", "area x"};
  for (std::size_t i = 1; i < ascending.size(); ++i) {
    EXPECT_LT(SortKey(ascending[i - 1]), SortKey(ascending[i])) << ascending[i];
  }
}

TEST(AreaTable, PagesAreAllThatIsWantedInOrder) {
  std::mt19937 random{3};
  for (int round = 0; round < 60; ++round) {
    const View& view = Counties(RandomQuery(random));
    TableChoice choice;
    choice.sort = std::array{"", "name", "value", "parent"}[random() % 4];
    choice.down = random() % 2 == 0;
    choice.find = std::array{"", "", "an", "SAINT", "none such"}[random() % 5];
    if (random() % 3 == 0) choice.in = static_cast<int>(random() % 8);

    std::vector<const CMapOb*> all;
    for (choice.page = 1; choice.page <= ChooseRows(view, choice).pages; ++choice.page) {
      const TableRows rows = ChooseRows(view, choice);
      EXPECT_LE(rows.areas.size(), kTableRows);
      all.insert(all.end(), rows.areas.begin(), rows.areas.end());
      EXPECT_EQ(rows.page, choice.page);
    }
    std::set<const CMapOb*> wanted;
    for (const CMapOb* area : view.areas) {
      const std::string name = Folded(area->GetName().View());
      const bool isFound = name.find(Folded(choice.find)) != std::string::npos;
      if (isFound && (!choice.in || SlotOf(view, *area) == *choice.in)) wanted.insert(area);
    }
    EXPECT_EQ(std::set(all.begin(), all.end()), wanted);
    EXPECT_EQ(all.size(), wanted.size()) << "none twice";
    EXPECT_EQ(ChooseRows(view, choice).found, wanted.size());
    EXPECT_EQ(ChooseRows(view, choice).page, choice.page - 1) << "the last for one beyond it";

    if (choice.sort == "value") {
      const auto isBefore = [&](const CMapOb* a, const CMapOb* b) {
        const auto [x, y] = std::pair(ValueOf(view, *a), ValueOf(view, *b));
        if (!x || !y) return x && !y;
        return choice.down ? *y < *x : *x < *y;
      };
      EXPECT_TRUE(std::is_sorted(all.begin(), all.end(), isBefore));
    }
    if (choice.sort == "name") {
      EXPECT_TRUE(std::is_sorted(all.begin(), all.end(), [&](const CMapOb* a, const CMapOb* b) {
        const auto [x, y] = std::pair(SortKey(a->GetName().View()), SortKey(b->GetName().View()));
        return choice.down ? y < x : x < y;
      }));
    }
    for (const CMapOb* kept : {view.areas.front(), view.areas.back()}) {
      choice.kept = kept;
      choice.page = 1;
      const TableRows rows = ChooseRows(view, choice);
      const bool isThere = std::count(rows.areas.begin(), rows.areas.end(), kept) == 1;
      EXPECT_EQ(isThere, wanted.count(kept) == 1);
    }
  }
}

TEST(Histogram, CountsEachValueOnceInItsGroup) {
  std::mt19937 random{5};
  for (int round = 0; round < 80; ++round) {
    const std::string query = RandomQuery(random);
    const View& view = Counties(query);
    const Histogram histogram = HistogramOf(view);
    std::map<int, std::size_t> counts;
    std::pair<int, int> last{-1, -1};
    for (const Histogram::Part& part : histogram.parts) {
      counts[part.slot] += part.count;
      EXPECT_GE(part.bin, last.first);
      EXPECT_LT(part.bin, kBins);
      last = {part.bin, part.slot};
    }
    std::map<int, std::size_t> wanted;
    for (const CMapOb* area : view.areas) {
      if (ValueOf(view, *area)) ++wanted[SlotOf(view, *area)];
    }
    EXPECT_EQ(counts, wanted) << query;
    EXPECT_TRUE(std::is_sorted(histogram.bounds.begin(), histogram.bounds.end()));
    for (const double bound : histogram.bounds) EXPECT_TRUE(bound > 0.0 && bound <= 1.0) << query;
  }
  EXPECT_TRUE(HistogramOf(Counties("var=2&level=2")).isLogarithmic);
  EXPECT_FALSE(HistogramOf(Counties("var=4&level=2")).isLogarithmic);
}

// Where links lead that hold what addresses may hold.
class SomeLinks : public Links {
 public:
  std::string ToPlace(const CMapOb* area) const override {
    return area == nullptr ? "/?a=1&b=\"2\"" : "/" + KeyText(area->GetArea()) + "?a='1'&b=<2>";
  }
  std::string ToRow(const CMapOb& area) const override { return ToPlace(&area) + "#kept"; }
  std::string ToSorted(std::string_view sort, bool down) const override {
    return "?sort=" + std::string(sort) + (down ? "&down" : "");
  }
  std::string ToRows(int page) const override { return "?rows=" + std::to_string(page); }
  std::string ToSlot(std::optional<int> slot) const override {
    return slot ? "?in=" + std::to_string(*slot) : "";
  }
};

// The texts of well-formed markup, and the addresses in it.
struct Parsed {
  std::string error;
  std::string text;
  std::vector<std::string> addresses;
  int rows = 0;
};

Parsed Parse(const std::string& markup) {
  Parsed parsed;
  const std::string whole = "<all>" + markup + "</all>";
  XML_Parser parser = XML_ParserCreate("UTF-8");
  XML_SetUserData(parser, &parsed);
  XML_SetElementHandler(
      parser,
      [](void* to, const char* name, const char** attributes) {
        auto& result = *static_cast<Parsed*>(to);
        if (std::string_view(name) == "tr") ++result.rows;
        for (; *attributes != nullptr; attributes += 2) {
          if (std::string_view(attributes[0]) == "href")
            result.addresses.emplace_back(attributes[1]);
        }
      },
      [](void*, const char*) {});
  XML_SetCharacterDataHandler(parser, [](void* to, const char* text, int length) {
    static_cast<Parsed*>(to)->text.append(text, static_cast<std::size_t>(length));
  });
  if (XML_Parse(parser, whole.data(), static_cast<int>(whole.size()), 1) != XML_STATUS_OK) {
    parsed.error = XML_ErrorString(XML_GetErrorCode(parser));
  }
  XML_ParserFree(parser);
  return parsed;
}

TEST(Pieces, TakeAnyText) {
  for (const std::string hostile :
       {"</table><script>alert(1)</script>", "\" onload=\"x", "&amp;<!-- ]]>", "a\xFF\x01z", "'"}) {
    TempDir folder;
    const std::string square = "[Polygon]\n0 0\n1 0\n1 1\n0 1\n";
    folder.Write("one.map", "[Map]\nVersion=Ortex 3.2\nMapName=" + hostile +
                                "\nLongLat=No\n[AreaLevels]\nName=" + hostile + "\nName=Part\n" +
                                "[GeoGroup]\nName=" + hostile + "\nAreaStructure=1\n" + square +
                                "[GeoUnit]\nName=" + hostile + "\nAreaStructure=1, 1\n" + square +
                                "[GeoUnit]\nName=other\nAreaStructure=1, 2\n" + square +
                                "[EndGroup]\n");
    folder.Write(
        "one.mdf",
        "[MapDataFile]\nVersion=Ortex 3.2\nMapFile=one\nAreaLevels=2\nVariables=1\n"
        "Thousands=Comma\nDecimal=Dot\nNoValue=N/A\nMapLabel=~\n[Data]\nA\tB\tArea Name\t" +
            hostile + "\n1\t1\t~\tN/A\n1\t2\t~\t7\n");
    Request request;
    request.data = folder.Path("one.mdf");
    request.level = 2;
    request.groupNames = {hostile};
    View view(request);
    const SomeLinks links;
    TableChoice choice;
    const ComparedColumn compared(view, "1");
    const std::vector<std::string> notes{hostile};
    const std::string name = XmlText(hostile);
    const std::map<std::string, std::string> pieces{
        {"table", TableMarkup(view, choice, ChooseRows(view, choice), links, &compared)},
        {"legend", LegendMarkup(view, links, 0)},
        {"path", PathMarkup(view, links)},
        {"missing", MissingMarkup(view, links)},
        {"notes", NotesMarkup(notes)}};
    for (const auto& [what, piece] : pieces) {
      const Parsed parsed = Parse(piece);
      EXPECT_EQ(parsed.error, "") << what << ' ' << piece;
      EXPECT_NE(parsed.text.find(name), std::string::npos) << what << ' ' << piece;
      EXPECT_EQ(piece.find(" style="), std::string::npos) << "which pages forbid";
    }
    const auto addresses = Parse(pieces.at("table")).addresses;
    EXPECT_NE(std::find(addresses.begin(), addresses.end(), "/1,1?a='1'&b=<2>#kept"),
              addresses.end());
  }
}

TEST(Pieces, LegendAndTableSayWhatTheViewDoes) {
  View& view = Counties("var=5&level=2");
  const SomeLinks links;
  const Parsed legend = Parse(LegendMarkup(view, links, std::nullopt));
  int sum = 0;
  for (const LegendRow& row : view.legend.GetRows()) {
    sum += row.group->count;
    EXPECT_NE(legend.text.find(row.text), std::string::npos);
    EXPECT_NE(legend.text.find(std::to_string(row.group->count)), std::string::npos);
  }
  EXPECT_EQ(sum, static_cast<int>(view.areas.size()));
  EXPECT_EQ(Parse(HistogramMarkup(view)).error, "");
  EXPECT_NE(Parse(MissingMarkup(view, links)).text.find("and 16 more"), std::string::npos);
  TableChoice choice;
  choice.page = 3;
  const Parsed table = Parse(TableMarkup(view, choice, ChooseRows(view, choice), links, nullptr));
  EXPECT_EQ(table.rows, 1 + static_cast<int>(kTableRows));
  EXPECT_NE(table.text.find("Rows 201 to 300 of 3142"), std::string::npos);
  for (const std::string address : {"?rows=2", "?rows=4", "?sort=value"}) {
    EXPECT_EQ(std::count(table.addresses.begin(), table.addresses.end(), address), 1) << address;
  }
}

}  // namespace
}  // namespace vexel::test
