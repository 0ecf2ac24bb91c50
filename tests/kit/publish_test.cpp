// The publication page: rings on the page, what stands where, and the SVG.

#include <expat.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <map>
#include <numeric>
#include <set>
#include <thread>

#include "kit/publish/compose.h"
#include "kit/publish/page_plan.h"
#include "kit/publish/placement.h"
#include "kit/publish/pole.h"
#include "kit/publish/svg.h"
#include "kit/publish/text_metrics.h"
#include "kit/request/error.h"
#include "kit/request/markup.h"
#include "kit/request/query.h"
#include "support/files.h"

namespace vexel::test {
namespace {

using Points = std::vector<GridPoint>;

Request Sample(const std::string& query) {
  Request request;
  request.data = std::string(VEXEL_SAMPLES_DIR) + "/us-counties.mdf";
  ReadQuery(request, query);
  return request;
}

constexpr const char* kRate = "var=4&level=";

bool Overlap(const PageArea& a, const PageArea& b) {
  constexpr double kTouch = 0.01;
  return a.left + a.width > b.left + kTouch && b.left + b.width > a.left + kTouch &&
         a.top + a.height > b.top + kTouch && b.top + b.height > a.top + kTouch;
}

bool IsOnPage(const PageArea& area, const PageSize& size) {
  constexpr double kRounding = 0.01;
  return area.left >= -kRounding && area.top >= -kRounding &&
         area.left + area.width <= size.width + kRounding &&
         area.top + area.height <= size.height + kRounding;
}

PageArea AreaOf(const TextLine& text) {
  const double left = text.anchor == TextAnchor::middle ? text.x - text.room / 2.0 : text.x;
  return {left, text.y - kAscent * text.size, text.room, (kAscent + kDescent) * text.size};
}

// The grid has one step for each unit of the working space here; y is turned over.
Points RingOf(const std::vector<CPoint>& vertices, bool isHole, double scale = 1.0) {
  const PlaneExtent extent{0.0, 100.0, 0.0, 100.0};
  Rings rings;
  AddRing(rings, vertices, isHole,
          Placement(PlaneTurn(0.0), extent, {0.0, 0.0, 100.0, 100.0}, scale, 1));
  if (rings.Count() == 0) return {};
  const auto ring = rings.Ring(0);
  return {ring.begin(), ring.end()};
}

TEST(PublishRings, WindAsOutlinesAndHolesDo) {
  const std::vector<CPoint> there{{0, 100}, {100, 100}, {100, 0}};
  const std::vector<CPoint> back(there.rbegin(), there.rend());
  const Points outline{{0, 0}, {100, 0}, {100, 100}};
  EXPECT_EQ(RingOf(there, false), outline);
  EXPECT_EQ(RingOf(back, false), (Points{{100, 100}, {0, 0}, {100, 0}}));
  EXPECT_EQ(RingOf(there, true), (Points{{0, 0}, {100, 100}, {100, 0}}));
  EXPECT_EQ(RingOf(back, true), (Points{{100, 100}, {100, 0}, {0, 0}}));
}

TEST(PublishRings, KeepAnExtentAndLoseNoNeighbour) {
  // At a hundredth, everything comes to one place or to a line.
  const std::vector<CPoint> small{{10, 10}, {20, 10}, {20, 20}};
  const std::vector<CPoint> flat{{0, 10}, {900, 10}, {900, 20}};
  EXPECT_EQ(RingOf(small, false, 0.01), (Points{{0, 1}, {1, 1}, {1, 2}, {0, 2}}));
  EXPECT_EQ(RingOf(flat, false, 0.01), (Points{{0, 1}, {10, 1}, {10, 2}, {0, 2}}));
  EXPECT_TRUE(RingOf(small, true, 0.01).empty());
  EXPECT_TRUE(RingOf({}, false).empty());
  // Vertices at one place count once, whichever way the ring runs, and the last is not the first.
  const std::vector<CPoint> dense{{0, 100}, {1, 100}, {300, 100}, {301, 99}, {300, 0}, {0, 99}};
  EXPECT_EQ(RingOf(dense, false, 0.1), (Points{{0, 0}, {30, 0}, {30, 10}}));
}

// The rings that a path's `d` draws.
std::vector<Points> RingsOf(std::string_view path) {
  std::vector<Points> rings;
  GridPoint here;
  char command = 0;
  const auto number = [&] {
    while (path.front() == ' ') path.remove_prefix(1);
    int value = 0;
    const auto end = std::from_chars(path.data(), path.data() + path.size(), value).ptr;
    path.remove_prefix(static_cast<std::size_t>(end - path.data()));
    return value;
  };
  while (!path.empty()) {
    if (std::strchr("Mmlhvz", path.front()) != nullptr) {
      command = path.front();
      path.remove_prefix(1);
      if (command == 'z') here = rings.back().front();
      if (command == 'z') continue;
      if (command == 'M' || command == 'm') rings.emplace_back();
    }
    if (command != 'v') here.x = (command == 'M' ? 0 : here.x) + number();
    if (command != 'h') here.y = (command == 'M' ? 0 : here.y) + number();
    rings.back().push_back(here);
    if (command == 'm') command = 'l';
  }
  return rings;
}

bool IsClockwise(const Points& ring) {
  double area = 0.0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const GridPoint& next = ring[(i + 1) % ring.size()];
    area += 1.0 * ring[i].x * next.y - 1.0 * next.x * ring[i].y;
  }
  return area > 0.0;
}

// What the SVG says of each area, by its key.
struct SvgArea {
  std::string kind;
  std::string path;
  std::string title;
};

// The elements of a document; an error of its own where it is no XML.
struct SvgContents {
  explicit SvgContents(const std::string& svg) {
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, &Begin, &End);
    XML_SetCharacterDataHandler(parser, &Characters);
    if (XML_Parse(parser, svg.data(), static_cast<int>(svg.size()), 1) != XML_STATUS_OK) {
      error = XML_ErrorString(XML_GetErrorCode(parser));
    }
    XML_ParserFree(parser);
  }

  static void Begin(void* self, const char* /*name*/, const char** attributes) {
    auto& contents = *static_cast<SvgContents*>(self);
    std::map<std::string, std::string> values;
    for (; *attributes != nullptr; attributes += 2) values[attributes[0]] = attributes[1];
    contents.text.clear();
    if (values.count("data-key") == 0) return;
    contents.key = values["data-key"];
    contents.areas[contents.key] = {values["class"], values["d"], ""};
    ++contents.count;
  }
  static void Characters(void* self, const char* text, int length) {
    static_cast<SvgContents*>(self)->text.append(text, static_cast<std::size_t>(length));
  }
  static void End(void* self, const char* name) {
    auto& contents = *static_cast<SvgContents*>(self);
    if (std::string_view(name) == "title" && !contents.key.empty()) {
      contents.areas[contents.key].title = contents.text;
    }
    if (std::string_view(name) == "text") contents.texts.push_back(contents.text);
  }

  std::string error;
  std::map<std::string, SvgArea> areas;
  std::size_t count = 0;
  std::vector<std::string> texts;
  std::string key;
  std::string text;
};

TEST(PublishSvg, HoldsEveryAreaOnceWithItsOutlineAndValue) {
  View view(Sample(std::string(kRate) + "2&label=State&outline=6,71"));
  const Drawing drawing = Compose(view);
  const std::string svg = SvgText(drawing);
  EXPECT_LE(svg.size(), 600'000U);
  const SvgContents contents(svg);
  ASSERT_EQ(contents.error, "");
  EXPECT_EQ(contents.count, view.areas.size());
  ASSERT_EQ(drawing.areas.size(), view.areas.size());
  for (std::size_t i = 0; i < view.areas.size(); ++i) {
    const AreaShape& shape = drawing.areas[i];
    const SvgArea& area = contents.areas.at(KeyText(view.areas[i]->GetArea()));
    std::vector<Points> rings;
    for (std::uint32_t r = shape.rings.first; r < shape.rings.end; ++r) {
      const auto ring = drawing.rings.Ring(r);
      rings.emplace_back(ring.begin(), ring.end());
    }
    ASSERT_EQ(RingsOf(area.path), rings) << area.path;
    EXPECT_EQ(area.title,
              std::string(view.areas[i]->GetName().View()) + ": " +
                  ValueText(view, *view.areas[i], view.listener.GetSeparators(), "No data"));
    const std::optional<double> value = ValueOf(view, *view.areas[i]);
    EXPECT_EQ(area.kind, value ? "c" + std::to_string(*view.legend.GroupOf(*value)) : "missing");
    for (std::size_t r = 0; r < rings.size(); ++r) {
      EXPECT_EQ(IsClockwise(rings[r]), view.areas[i]->GetPoly(static_cast<int>(r))->IsHole() == 0);
    }
  }
  EXPECT_NE(svg.find("<path class=\"line-above\""), svg.npos);
  EXPECT_NE(svg.find("<path class=\"line-chosen\""), svg.npos);
}

TEST(PublishSvg, IsValidWhateverTheNamesHold) {
  TempDir folder;
  const std::vector<std::string> names{"<b>&\"'", "\x01\x1B[31m", "\xFF\xC3", "\u05D0\u05D1",
                                       "a\uFFFEb"};
  const std::vector<std::string> shown{"<b>&\"'", "\uFFFD\uFFFD[31m", "\uFFFD\uFFFD",
                                       "\u05D0\u05D1", "a\uFFFDb"};
  std::string map = "[Map]\nVersion=Ortex 3.2\nMapName=]]>\nLongLat=No\n[AreaLevels]\nName=A\n";
  std::string data =
      "[MapDataFile]\nVersion=Ortex 3.2\nMapFile=odd\nAreaLevels=1\nVariables=1\nThousands=Comma\n"
      "Decimal=Dot\nNoValue=N/A\nMapLabel=~\n[Data]\nA\tArea Name\t<i>\n";
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string left = std::to_string(i * 10);
    const std::string right = std::to_string(i * 10 + 10);
    map += "[GeoUnit]\nName=" + names[i] + "\nAreaStructure=" + std::to_string(i) +
           "\n[Polygon]\n" + left + " 0\n" + right + " 0\n" + right + " 10\n" + left + " 10\n";
    data += std::to_string(i) + "\t~\t" + std::to_string(i) + '\n';
  }
  folder.Write("odd.map", map);
  folder.Write("odd.mdf", data);
  Request request;
  request.data = folder.Path("odd.mdf");
  request.publication.labels = {"all"};
  request.publication.note = "</svg>\x02";
  request.publication.source = "\u05D2 2009";
  View view(request);
  const std::string svg = SvgText(Compose(view));
  // From right to left, and at the left of the page all the same.
  EXPECT_NE(svg.find(" direction=\"rtl\" text-anchor=\"end\">\u05D2 2009<"), svg.npos);
  const SvgContents contents(svg);
  ASSERT_EQ(contents.error, "");
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(contents.areas.at(std::to_string(i)).title, shown[i] + ": " + std::to_string(i));
  }
  EXPECT_EQ(contents.texts.front(), "<i> - ]]>");
  EXPECT_EQ(std::count(contents.texts.begin(), contents.texts.end(), "</svg>\uFFFD"), 1);
}

TEST(PublishSvg, SharesNoNamesWithAnotherOnTheSamePage) {
  const auto names = [](const std::string& query) {
    View view(Sample(std::string(kRate) + "1&" + query));
    const std::string svg = SvgText(Compose(view));
    std::set<std::string> found;
    constexpr std::string_view kId = " id=\"";
    for (std::size_t at = svg.find(kId); at != svg.npos; at = svg.find(kId, at + 1)) {
      const std::size_t begin = at + kId.size();
      found.insert(svg.substr(begin, svg.find('"', begin) - begin));
    }
    const std::size_t styles = svg.find("<style>\n") + 7;
    for (std::size_t at = styles; svg.compare(at, 9, "\n</style>") != 0;
         at = svg.find('\n', at + 1)) {
      EXPECT_EQ(svg.compare(at, 6, "\n#map-"), 0) << svg.substr(at, 40);
    }
    return found;
  };
  const std::set<std::string> reds = names("palette=Reds");
  EXPECT_GE(reds.size(), 3U);
  for (const std::string& name : names("palette=Greens")) EXPECT_EQ(reds.count(name), 0U) << name;
}

TEST(PublishSvg, IsTheSameInEveryThread) {
  const auto page = [] {
    View view(Sample(std::string(kRate) + "1&label=all&label-text=both"));
    return SvgText(Compose(view));
  };
  const std::string alone = page();
  std::vector<std::string> pages(4);
  std::vector<std::thread> threads;
  for (std::string& each : pages) threads.emplace_back([&] { each = page(); });
  for (std::thread& thread : threads) thread.join();
  for (const std::string& each : pages) EXPECT_EQ(each, alone);
}

// Everything long: a page must cope whatever its size.
PageContents Crowded(const PageSize& size, int groups, bool isWide) {
  PageContents contents;
  contents.size = size;
  contents.extentWidth = isWide ? 30000.0 : 9000.0;
  contents.extentHeight = isWide ? 12000.0 : 32000.0;
  for (int i = 0; i < 40; ++i) contents.title += "unemployment ";
  contents.subtitle = contents.title + contents.title;
  contents.note = contents.title;
  contents.source = std::string(300, 'x');
  contents.legend.heading = contents.title;
  for (int i = 0; i < groups; ++i) {
    contents.legend.entries.push_back({std::string(static_cast<std::size_t>(i) * 9 + 1, 'W'), 0});
  }
  return contents;
}

TEST(PublishPlan, OverlapsAndCutsOffNothing) {
  std::vector<PageSize> sizes{{320, 240},  {240, 320},  {800, 600}, {4000, 3000},
                              {1200, 200}, {150, 1500}, {3, 2},     {65535, 20}};
  for (int height = 30; height < 160; height += 7) {
    for (const int width : {60, 180, 900}) sizes.push_back({width, height});
  }
  for (const PageSize& size : sizes) {
    for (const int groups : {0, 1, 8}) {
      for (const bool isWide : {false, true}) {
        SCOPED_TRACE(SizeText(size) + ' ' + std::to_string(groups) + (isWide ? " wide" : " tall"));
        const PageContents contents = Crowded(size, groups, isWide);
        const PagePlan plan = PlanPage(contents);
        EXPECT_TRUE(IsOnPage(plan.map, size));
        EXPECT_GT(plan.mapScale, 0.0);
        EXPECT_NEAR(plan.map.width / plan.map.height, contents.extentWidth / contents.extentHeight,
                    0.001);
        for (const PageArea& area : plan.taken) {
          EXPECT_TRUE(IsOnPage(area, size));
          EXPECT_FALSE(Overlap(area, plan.map));
        }
        for (std::size_t i = 0; i < plan.texts.size(); ++i) {
          const PageArea area = AreaOf(plan.texts[i]);
          EXPECT_TRUE(IsOnPage(area, size)) << plan.texts[i].text;
          EXPECT_FALSE(Overlap(area, plan.map)) << plan.texts[i].text;
          for (std::size_t j = 0; j < i; ++j) {
            EXPECT_FALSE(Overlap(area, AreaOf(plan.texts[j]))) << plan.texts[j].text;
          }
          for (const PageBox& box : plan.boxes) {
            EXPECT_FALSE(Overlap(area, {box.left, box.top, box.width, box.height}));
          }
        }
        const bool hasRoom = size.width >= 240 && size.height >= 240;
        if (hasRoom && !plan.lacksLegend) {
          EXPECT_EQ(plan.boxes.size(), static_cast<std::size_t>(groups));
        }
      }
    }
  }
}

TEST(PublishPlan, GivesTheMapTheLargerPlace) {
  PageContents contents;
  contents.size = {800, 600};
  contents.legend.entries.assign(6, {"1.2 to 5.8", 0});
  contents.extentHeight = 10000.0;
  contents.extentWidth = 30000.0;  // flat: the legend goes below
  EXPECT_GT(PlanPage(contents).legend.top,
            PlanPage(contents).map.top + PlanPage(contents).map.height);
  contents.extentWidth = 5000.0;  // tall: to the right
  EXPECT_GT(PlanPage(contents).legend.left,
            PlanPage(contents).map.left + PlanPage(contents).map.width);
}

TEST(PublishText, FitsItsRoomOrEndsInAnEllipsis) {
  const Typeface face{10.0, false};
  EXPECT_NEAR(TextWidth("Wi\u0301", face), 9.88 + 2.77, 1e-9);
  EXPECT_EQ(Shortened("Grand Isle", face, 200.0), "Grand Isle");
  EXPECT_EQ(Shortened("Grand Isle", face, 45.0), "Grand\u2026");
  EXPECT_EQ(Shortened("Grand Isle", face, 5.0), "");
  const std::string text = "Median age of those who were born elsewhere Donaudampfschifffahrt";
  for (const double room : {30.0, 80.0, 150.0, 1000.0}) {
    for (const std::size_t most : {1U, 2U, 30U}) {
      const auto lines = Wrapped(text, face, room, most);
      EXPECT_LE(lines.size(), most);
      for (const std::string& line : lines) EXPECT_LE(TextWidth(line, face), room) << line;
    }
  }
  const auto lines = Wrapped(" to  be cut ", face, 40.0, 9);
  EXPECT_EQ(lines, (std::vector<std::string>{"to  be", "cut"}));
}

// A ring in steps of a grid of one, clockwise as a page shows it.
Drawing DrawingOf(const Points& ring) {
  Drawing drawing;
  drawing.width = drawing.height = 1000;
  drawing.rings.Points() = ring;
  drawing.rings.End();
  return drawing;
}

TEST(PublishPole, IsWhereThereIsMostRoom) {
  // An angle: 100 wide at its foot, 40 in its upright.
  const Drawing angle = DrawingOf({{0, 0}, {40, 0}, {40, 300}, {400, 300}, {400, 400}, {0, 400}});
  const AreaBorders borders(angle, {0, 1});
  const PagePoint pole = borders.Pole(1.0);
  EXPECT_NEAR(pole.y, 350.0, 10.0);
  EXPECT_TRUE(borders.Holds({pole.x - 40.0, pole.y - 40.0, 80.0, 80.0}));
  const PagePoint wide = borders.Pole(3.0);
  EXPECT_TRUE(borders.Holds({wide.x - 120.0, wide.y - 30.0, 240.0, 60.0}));
  EXPECT_FALSE(borders.Holds({30.0, 100.0, 20.0, 20.0}));   // over the border
  EXPECT_FALSE(borders.Holds({200.0, 100.0, 20.0, 20.0}));  // beside the area
  EXPECT_FALSE(borders.Holds({-10.0, -10.0, 500.0, 500.0}));
}

TEST(PublishLabels, StandWithinTheirAreasAndApart) {
  View view(
      Sample(std::string(kRate) + "1&label=all&label-text=both&size=1000x700&box=6&label=48"));
  const Drawing drawing = Compose(view);
  std::vector<PageArea> labels;
  std::map<std::string, std::size_t> seen;
  for (const TextLine& text : drawing.texts) {
    if (text.role != TextRole::label) continue;
    labels.push_back(AreaOf(text));
    ++seen[text.text];
  }
  EXPECT_GT(labels.size(), 40U);
  EXPECT_EQ(seen["California"], 1U);
  EXPECT_EQ(seen["Texas"], 1U);
  EXPECT_EQ(seen["Delaware"], 0U);  // too small
  for (std::size_t i = 0; i < labels.size(); ++i) {
    EXPECT_TRUE(IsOnPage(labels[i], view.request.size));
    for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(Overlap(labels[i], labels[j]));
  }
  for (const TextLine& text : drawing.texts) {
    const auto area =
        std::find_if(drawing.areas.begin(), drawing.areas.end(),
                     [&](const auto& each) { return drawing.Of(each.name) == text.text; });
    if (text.role != TextRole::label || area == drawing.areas.end() || text.halo ||
        text.text == "California") {
      continue;
    }
    EXPECT_TRUE(AreaBorders(drawing, area->rings).Holds(AreaOf(text))) << text.text;
  }
}

TEST(PublishLabels, NameWhatIsOnShow) {
  for (const auto& [label, told] : {std::pair{"County", "State"}, std::pair{"99", "no area 99"},
                                    std::pair{"6,1", "none of those on show"}}) {
    View view(Sample(std::string(kRate) + "1&label=" + label));
    try {
      Compose(view);
      ADD_FAILURE() << label;
    } catch (const Error& error) {
      EXPECT_NE(std::string(error.what()).find(told), std::string::npos) << error.what();
    }
  }
}

// The box that the label of that text stands on.
PageArea PlateOf(const Drawing& drawing, std::string_view name) {
  const auto text = std::find_if(drawing.texts.begin(), drawing.texts.end(),
                                 [=](const TextLine& each) { return each.text == name; });
  for (const PageBox& box : drawing.boxes) {
    const PageArea area{box.left, box.top, box.width, box.height};
    if (Overlap(area, AreaOf(*text))) return area;
  }
  return {};
}

TEST(PublishLabels, StandBesideAreasThatTheyWouldHide) {
  View view(Sample(std::string(kRate) + "1&box=10&box=48&label=all"));  // Delaware, Texas
  const Drawing drawing = Compose(view);
  const auto isLeader = [](const OutlineShapes& each) { return each.name == "leader"; };
  const auto leader = std::find_if(drawing.outlines.begin(), drawing.outlines.end(), isLeader);
  ASSERT_NE(leader, drawing.outlines.end());
  EXPECT_EQ(std::count_if(leader, drawing.outlines.end(), isLeader), 1);
  const GridPoint from = drawing.rings.Ring(leader->rings.first).front();
  const auto delaware =
      std::find_if(drawing.areas.begin(), drawing.areas.end(),
                   [&](const AreaShape& area) { return drawing.Of(area.key) == "10"; });
  const double step = 1.0 / drawing.grid;
  const PageArea dot{from.x * step, from.y * step, 0.0, 0.0};
  EXPECT_TRUE(AreaBorders(drawing, delaware->rings).Holds(dot));
  for (const TextLine& text : drawing.texts) {
    const bool isOnPlate = Overlap(AreaOf(text), PlateOf(drawing, "Delaware"));
    EXPECT_EQ(isOnPlate, text.text == "Delaware" || text.text == "8.2") << text.text;
  }
  EXPECT_NE(view.notes.back().find(" of 51 labels found no place"), std::string::npos);
  // Beside Massachusetts there are labels that would fit into their areas, but for its own.
  View crowded(Sample(std::string(kRate) + "1&box=25&label=all"));
  const Drawing other = Compose(crowded);
  const PageArea plate = PlateOf(other, "Massachusetts");
  EXPECT_EQ(std::count_if(other.texts.begin(), other.texts.end(),
                          [&](const TextLine& text) { return Overlap(AreaOf(text), plate); }),
            2);
}

TEST(PublishNotes, NameTextsThatAreCutOrLost) {
  const auto notes = [](const std::string& query) {
    View view(Sample(std::string(kRate) + "1&" + query));
    Compose(view);
    std::string all;
    for (const std::string& note : view.notes) all += note + '\n';
    return all;
  };
  EXPECT_EQ(notes("title=Short&source=Bureau"), "");
  EXPECT_NE(notes("source=" + std::string(900, 'x')).find("the source is too long"),
            std::string::npos);
  const std::string small = notes("size=110x90&note=n");
  EXPECT_NE(small.find("the note does not fit on a page of 110x90"), std::string::npos) << small;
}

TEST(PublishLines, ThinOutAndVanishWithTheAreas) {
  const auto lineAt = [](const std::string& query) {
    View view(Sample(query));
    const Drawing drawing = Compose(view);
    return drawing.areaLine ? drawing.areaLineWidth : 0.0;
  };
  const std::string counties = std::string(kRate) + "2&size=";
  const double states = lineAt(std::string(kRate) + "1");
  const double large = lineAt(counties + "800x600");
  const double small = lineAt(counties + "400x300");
  EXPECT_GT(states, large);
  EXPECT_GT(large, small);
  EXPECT_GT(small, 0.0);
  EXPECT_EQ(lineAt(counties + "120x90"), 0.0);
  EXPECT_EQ(lineAt(counties + "120x90&line-width=2"), 2.0);
  EXPECT_EQ(lineAt(std::string(kRate) + "1&line-width=0"), 0.0);
}

TEST(Markup, TakesCharactersOneByOne) {
  std::string_view text = "a\u00E9\u20AC\U0001F5FA\xE2\x82z\xED\xA0\x80";
  std::vector<char32_t> characters;
  while (!text.empty()) characters.push_back(NextCharacter(text));
  EXPECT_EQ(characters,
            (std::vector<char32_t>{U'a', 0xE9, 0x20AC, 0x1F5FA, kReplacement, kReplacement, U'z',
                                   kReplacement, kReplacement, kReplacement}));
}

}  // namespace
}  // namespace vexel::test
