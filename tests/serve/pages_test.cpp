// The pages as texts: what the form says is the state, and no word of anybody breaks one.

#include "apps/serve/pages/pages.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>
#include <regex>

#include "kit/publish/compose.h"
#include "kit/request/markup.h"
#include "kit/request/parameters.h"
#include "kit/request/query.h"
#include "kit/request/values.h"
#include "kit/view/area_finder.h"

namespace vexel::serve {
namespace {

using Json = nlohmann::json;

class Pages : public testing::Test {
 protected:
  static View& Shown(Show& show, const std::string& address) {
    static View view([] {
      Request request;
      request.data = VEXEL_SAMPLES_DIR "/us-counties.mdf";
      return request;
    }());
    show = ReadTarget(address)->show;
    view.Show(show.request);
    return view;
  }

  static std::string Plain(std::string text) {
    for (const auto& [entity, character] : {std::pair{"&lt;", "<"},
                                            {"&gt;", ">"},
                                            {"&quot;", "\""},
                                            {"&#39;", "'"},
                                            {"&amp;", "&"}}) {
      for (std::size_t at; (at = text.find(entity)) != std::string::npos;) {
        text.replace(at, std::string_view(entity).size(), character);
      }
    }
    return text;
  }

  static std::string AttributeOf(const std::string& tag, const std::string& name) {
    std::smatch found;
    return std::regex_search(tag, found, std::regex(' ' + name + "=\"([^\"]*)\"")) ? Plain(found[1])
                                                                                   : "";
  }

  // What a browser asks for when the form is sent as it comes.
  static std::string SentForm(const std::string& page) {
    const std::size_t begin = page.find("<form id=\"choices\"");
    const std::string form = page.substr(begin, page.find("</form>", begin) - begin) +
                             page.substr(page.find("<input type=\"search\""));
    std::string address = AttributeOf(form, "action") + '?';
    std::string select;
    const std::regex tags("<(input|select|option)[^>]*>");
    for (std::sregex_iterator tag(form.begin(), form.end(), tags), end; tag != end; ++tag) {
      const std::string text = tag->str();
      if ((*tag)[1] == "select") select = AttributeOf(text, "name");
      const bool isOption = (*tag)[1] == "option";
      const bool isBox = text.find("\"checkbox\"") != std::string::npos ||
                         text.find("\"radio\"") != std::string::npos;
      const bool isOn = text.find(isOption ? " selected" : " checked") != std::string::npos;
      if ((*tag)[1] == "select" || ((isOption || isBox) && !isOn)) continue;
      address += '&' + (isOption ? select : AttributeOf(text, "name")) + '=' +
                 PercentEncoded(AttributeOf(text, "value"));
    }
    return address;
  }

  const Site site_{"", true};
};

TEST_F(Pages, TheFormSaysTheState) {
  for (const std::string address :
       {"/us", "/us?var=4&level=2&sort=value&down=1&find=an",
        "/us/48?var=Unemployed%202009&groups=3",
        "/us?var=3&var2=2&calc=percent&intervals=natural&palette=YlGnBu&reverse=1&with=6",
        "/us?bounds=1000,5000,250000.5&group-names=a%2Cb,c%26,d", "/us?groups=7&midpoint=50000.5",
        "/us?colors=%23112233,%23445566,%23778899&groups=3",
        "/us?size=640x480&zero-apart=1&open-ends=1",
        "/us?title=%22%3C%26%27&label=State&label=48&box=12&box=6&no-legend=1"}) {
    Show show;
    View& view = Shown(show, address);
    const std::string page = MapPage(site_, view, show, "");
    const auto sent = ReadTarget(SentForm(page));
    ASSERT_TRUE(sent) << address;
    EXPECT_EQ(AddressOf(sent->show), AddressOf(show)) << SentForm(page);
    EXPECT_EQ(sent->show.problems, std::vector<std::string>()) << address;
    EXPECT_NE(page.find("<link rel=\"canonical\" href=\"" + MarkupText(AddressOf(show)) + "\">"),
              std::string::npos);
    EXPECT_EQ(QueryText(view.request), QueryText(show.request)) << "the view is left as it was";
  }
}

// An address on any page is one that the viewer knows, in its normal form.
TEST_F(Pages, LinksLeadToStates) {
  for (const std::string address :
       {"/us?var=4&in=2", "/us/48?level=2&with=5&area=48,201", "/us?level=2&rows=4&sort=parent"}) {
    Show show;
    View& view = Shown(show, address);
    const std::string page = MapPage(site_, view, show, "");
    const std::regex links(R"lit( (href|src|data-outlines|data-at|data-up)="([^"]+)")lit");
    int count = 0;
    for (std::sregex_iterator link(page.begin(), page.end(), links), end; link != end; ++link) {
      std::string target = Plain((*link)[2]);
      target = target.substr(0, target.find('#'));
      if (target.empty() || target == "/" || target.starts_with("/assets/")) continue;
      const auto read = ReadTarget(target);
      ASSERT_TRUE(read) << target;
      EXPECT_EQ(AddressOf(read->show, read->part), target);
      EXPECT_EQ(read->show.problems, std::vector<std::string>()) << target;
      EXPECT_NO_THROW(view.Show(read->show.request)) << target;
      if (++count > 40) break;
    }
    EXPECT_GT(count, 20);
  }
}

TEST_F(Pages, WhatIsWrongIsTold) {
  Show show;
  View& view = Shown(show, "/us?wrong=%3Cb%3E&with=nothing");
  const std::string page = MapPage(site_, view, show, "--level: <i>none</i>");
  for (const std::string_view note : {"unknown parameter &quot;wrong&quot;",
                                      "&lt;i&gt;none&lt;/i&gt;", "with: there is no variable"}) {
    EXPECT_NE(page.find(note), std::string::npos) << note;
  }
  const std::string error = ErrorPage(site_, 404, "<script>");
  EXPECT_NE(error.find("&lt;script&gt;"), std::string::npos);
  std::vector<DataSet> sets(2);
  sets[0].set = "a b/<c>";
  sets[1] = {"second", "<b>", 3, 1, "\"it\" is <gone>"};
  const std::string catalog = CatalogPage({"/maps", false}, sets);
  EXPECT_NE(catalog.find("href=\"/maps/a%20b%2F%3Cc%3E\""), std::string::npos);
  EXPECT_NE(catalog.find("&quot;it&quot; is &lt;gone&gt;"), std::string::npos);
}

TEST_F(Pages, PrintsOnlyWhereThereIsAPrinter) {
  Show show;
  View& view = Shown(show, "/us/48");
  EXPECT_NE(MapPage({"/x", true}, view, show, "").find("href=\"/x/us/48/map.pdf\""),
            std::string::npos);
  EXPECT_EQ(MapPage({"/x", false}, view, show, "").find("map.pdf"), std::string::npos);
}

TEST_F(Pages, TellsAreasAndTheirNeighbours) {
  Show show;
  View& view = Shown(show, "/us?var=4&with=5");
  AreaFinder finder(view);
  Target target;
  target.show = show;
  const auto ask = [&] { return Json::parse(AtJson(view, finder, target)); };
  const Json outlines = Json::parse(OutlinesJson(view, show));
  for (std::size_t i = 0; i < view.areas.size(); ++i) {
    target.key = view.areas[i]->GetArea();
    target.way.reset();
    const Json area = ask();
    EXPECT_EQ(area["key"], outlines["keys"][i]);
    EXPECT_EQ(area["name"], outlines["names"][i]);
    EXPECT_EQ(area["value"], outlines["valueTexts"][outlines["values"][i].get<std::size_t>()]);
    EXPECT_EQ(area["compared"], outlines["compared"][i]);
    EXPECT_EQ(area["slot"], outlines["slots"][i]);
    EXPECT_EQ(area["parts"], outlines["parts"][i]);
    for (const auto& [way, axis, sign] : {std::tuple{Way::left, std::size_t{0}, -1},
                                          {Way::right, std::size_t{0}, 1},
                                          {Way::up, std::size_t{1}, -1},
                                          {Way::down, std::size_t{1}, 1}}) {
      target.way = way;
      const Json other = ask();
      const double step = other["middle"][axis].get<double>() - area["middle"][axis].get<double>();
      EXPECT_TRUE(other["key"] == area["key"] || step * sign > 0) << area << other;
    }
  }
  target.way.reset();
  target.key = ParseKey("99");
  EXPECT_TRUE(ask().is_null());
  target.key.reset();
  target.pixel = CPoint(0, 0);
  EXPECT_TRUE(ask().is_null());
}

// The middle of each box, where it lies in the area that is drawn there.
TEST_F(Pages, AClickLeadsToTheAreaDrawnThere) {
  Show show;
  View& view = Shown(show, "/us?var=4");
  AreaFinder finder(view);
  Request bare = view.request;
  bare.noTitle = true;
  bare.noLegend = true;
  View same(bare);
  const Drawing drawing = Compose(same);
  Target target;
  target.show = show;
  int hits = 0;
  for (std::size_t i = 0; i < drawing.areas.size(); ++i) {
    const auto ring = drawing.rings.Ring(drawing.areas[i].rings.first);
    CRect box{ring[0].x, ring[0].y, ring[0].x, ring[0].y};
    for (const GridPoint& vertex : ring) {
      box = {std::min(box.left, vertex.x), std::min(box.top, vertex.y),
             std::max(box.right, vertex.x), std::max(box.bottom, vertex.y)};
    }
    target.pixel = CPoint((box.left + box.right) / 2 / drawing.grid,
                          (box.top + box.bottom) / 2 / drawing.grid);
    const std::string key = KeyText(view.areas[i]->GetArea());
    if (GoAddress(site_, view, finder, target) == "/us/" + key + "?var=4") ++hits;
  }
  EXPECT_GT(hits, static_cast<int>(drawing.areas.size() * 3 / 4));
  target.pixel = CPoint(0, 0);
  EXPECT_EQ(GoAddress(site_, view, finder, target), "/us?var=4");
}

}  // namespace
}  // namespace vexel::serve
