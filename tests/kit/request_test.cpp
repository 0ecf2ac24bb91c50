// A request in its three forms: options' texts, the query of an address, JSON.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "kit/request/error.h"
#include "kit/request/json_request.h"
#include "kit/request/json_text.h"
#include "kit/request/parameters.h"
#include "kit/request/query.h"

namespace vexel {
namespace {

Request FromQuery(std::string_view query) {
  Request request;
  ReadQuery(request, query);
  return request;
}

Request FromJson(std::string_view text) {
  Request request;
  ReadJson(request, text, "view.json");
  return request;
}

// The text of the error that a call throws, with "?" in front for a wrong request.
template <typename Call>
std::string ErrorOf(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return (error.GetKind() == Error::Kind::request ? "?" : "") + std::string(error.what());
  }
  return "none";
}

// One text for each parameter, unlike what holds without it.
const std::pair<const char*, const char*> kSaid[] = {
    {"data", "a b.mdf"},
    {"map", "c.map"},
    {"var", "Rate, \"2009\" & 50%"},
    {"var2", "Löhne"},
    {"calc", "ratio"},
    {"zoom", "12,3"},
    {"level", "2"},
    {"groups", "6"},
    {"intervals", "widths"},
    {"same-bounds", "Births,3"},
    {"zero-apart", "1"},
    {"midpoint", "-0.5"},
    {"palette", "YlGnBu"},
    {"colors", "#fee,#CC0000,#102030"},
    {"legend-counts", "1"},
    {"open-ends", "1"},
    {"reverse", "1"},
    {"group-names", "low,1.50,3,high"},
    {"size", "640x480"},
    {"outline", "12,3,4"},
    {"box", "-7"},
    {"no-title", "1"},
    {"no-legend", "1"},
    {"separators", ".,"},
    {"title", "Where <work> & \"bread\" lack"},
    {"subtitle", "by county, 2009"},
    {"note", "Räte in %"},
    {"source", "Bureau"},
    {"label", "State"},
    {"label-text", "both"},
    {"background", "none"},
    {"line-color", "#102030"},
    {"line-width", "0.25"},
    {"scale", "2"},
};

Request Everything() {
  Request request;
  for (const auto& [name, text] : kSaid) {
    SetParameter(request, ParameterNamed(name), text, name);
  }
  SetParameter(request, ParameterNamed("bounds"), "-1.5,0,1e300", "bounds");
  return request;
}

TEST(Request, KeepsEverythingInEveryForm) {
  const Request said = Everything();
  std::set<std::string_view> names{"bounds"};
  std::transform(std::begin(kSaid), std::end(kSaid), std::inserter(names, names.end()),
                 [](const auto& each) { return each.first; });
  for (const Parameter& parameter : AllParameters()) {
    EXPECT_EQ(names.count(parameter.name), 1U) << parameter.name << " is not tried";
    EXPECT_FALSE(parameter.get(said).empty()) << parameter.name;
    EXPECT_TRUE(parameter.get(Request()).empty()) << parameter.name << " is not open at first";
  }
  EXPECT_TRUE(AskTheSame(FromJson(JsonText(said)), said)) << JsonText(said);
  Request asked = FromQuery(QueryText(said));
  asked.data = said.data;  // files have no place in an address
  asked.map = said.map;
  EXPECT_TRUE(AskTheSame(asked, said)) << QueryText(said);
}

TEST(Request, HasANormalQuery) {
  const char* const kNormal[][2] = {
      {"", ""},
      {"groups=5&palette=blue&var=1&reverse=0&size=800x600&intervals=counts", ""},
      {"bounds=1,2.50,3&groups=3&intervals=bounds", "bounds=1,2.5,3"},
      {"?palette=grey&&var=Birth+rate&var=2", "var=2&palette=grey"},
      {"box=1,2&outline=3&box=4&reverse", "reverse=1&outline=3&box=1,2&box=4"},
      {"group-names=a%2Cb,c+d&groups=2", "group-names=a%2Cb,c%20d"},
      {"palette=YLGNBU&midpoint=0.50", "midpoint=0.5&palette=YlGnBu"},
      {"colors=%23FFF,%23102030&groups=2", "colors=%23FFFFFF,%23102030"},
      {"var=%C3%84%zz%4", "var=%C3%84%25zz%254"},
  };
  for (const auto& [query, normal] : kNormal) {
    EXPECT_EQ(QueryText(FromQuery(query)), normal) << query;
    EXPECT_EQ(QueryText(FromQuery(normal)), normal);
  }
}

TEST(Request, PassesOverWhatIsWrongInAQueryAndSaysSo) {
  Request request;
  std::vector<std::string> problems;
  ReadQuery(request,
            "gruops=3&groups=9&calc=rato&map=/etc/passwd&level=2&reverse=maybe"
            "&box=1&box=x&colors=%23ff0000,x",
            &problems);
  EXPECT_EQ(QueryText(request), "level=2") << "nor does half of a list count";
  ASSERT_EQ(problems.size(), 7U);
  EXPECT_TRUE(problems[0].starts_with("map: ")) << problems[0];
  EXPECT_TRUE(problems[1].ends_with("did you mean ratio?")) << problems[1];
  EXPECT_EQ(problems[2], "groups: \"9\" is not a whole number from 1 to 7");
  EXPECT_EQ(problems[6], "unknown parameter \"gruops\"; did you mean groups?");
  EXPECT_TRUE(ErrorOf([] { FromQuery("bounds=2,1"); }).starts_with("?bounds: \"2,1\""));
  EXPECT_TRUE(ErrorOf([] { FromQuery("bounds=2,2"); }).starts_with("?bounds: \"2,2\""));
}

TEST(Request, TellsThePlaceInJson) {
  const char* const kWrong[][2] = {
      {"{\"groups\": 3,\n\"grups\": 4}", "view.json:2: unknown parameter \"grups\"; did you mean"},
      {"{\"groups\": 3,\n\n\"groups\": 4}", "view.json:3: \"groups\" stands there twice"},
      {"{\"groups\": \"3\"}", "view.json:1: \"groups\" is a number"},
      {"{\"groups\": 2.5}", "view.json:1: \"groups\": \"2.5\" is not a whole number"},
      {"{\"reverse\": 1}", "view.json:1: \"reverse\" is true or false"},
      {"{\"palette\": [\"grey\"]}", "view.json:1: \"palette\" is an array"},
      {"{\"zoom\": [[1]]}", "view.json:1: \"zoom\" is an array"},
      {"{\"zoom\": [\"x\"]}", "view.json:1: \"zoom\" has codes"},
      {"{\"bounds\": []}", "view.json:1: \"bounds\": takes a value"},
      {"{\"var\": {}}", "view.json:1: \"var\" is an object"},
      {"{\"var\": null}", "view.json:1: \"var\" is null"},
      {"\n[1]", "view.json:2: the text is no object"},
      {"{\"var\": 1", "view.json:1: no JSON: "},
      {"{} {}", "view.json:1: no JSON: "},
      {"", "view.json:1: no JSON: "},
  };
  for (const auto& [text, told] : kWrong) {
    const std::string error = ErrorOf([&, json = text] { FromJson(json); });
    EXPECT_TRUE(error.starts_with(told)) << error << " for " << text;
  }
  // Depth costs nothing.
  EXPECT_TRUE(ErrorOf([] { FromJson(std::string(1'000'000, '[')); }).starts_with("view.json:1: "));
}

// In whatever order they come in one text; and what comes later takes the place of what it
// excludes.
TEST(Request, SetsParametersInTheOrderOfTheTable) {
  EXPECT_EQ(QueryText(FromQuery("bounds=1,2&intervals=bounds")), "bounds=1,2");
  EXPECT_EQ(QueryText(FromQuery("colors=%23fff&palette=Reds")), "palette=Reds&colors=%23FFFFFF");
  EXPECT_EQ(QueryText(FromJson("{\"colors\": [\"#fff\"], \"palette\": \"Reds\"}")),
            "palette=Reds&colors=%23FFFFFF");
  Request kept = FromQuery("bounds=1,2&colors=%23fff,%23000");
  ReadQuery(kept, "palette=Reds&intervals=natural");
  EXPECT_EQ(QueryText(kept), "intervals=natural&palette=Reds");
}

TEST(Request, RefusesWhatDoesNotGoTogether) {
  const char* const kWrong[][2] = {
      {"calc=ratio", "--var2"},
      {"var2=2", "--calc"},
      {"intervals=bounds", "--bounds"},
      {"bounds=1,2&intervals=widths", "--intervals bounds"},
      {"bounds=1,2&groups=3", "3 groups but 2 in --bounds"},
      {"bounds=1,2&midpoint=1", "--midpoint"},
      {"zero-apart=1&midpoint=1", "--zero-apart"},
      {"same-bounds=2&var2=3&calc=ratio", "--same-bounds"},
      {"colors=%23fff&groups=2", "2 groups but 1 in --colors"},
      {"group-names=a,b&groups=3", "3 groups but 2 in --group-names"},
  };
  for (const auto& [query, told] : kWrong) {
    const std::string error = ErrorOf([&, text = query] { GroupingOf(FromQuery(text)); });
    EXPECT_NE(error.find(told), std::string::npos) << error << " for " << query;
  }
  EXPECT_EQ(GroupingOf(FromQuery("bounds=1,2,4")).groups, 3);
  EXPECT_EQ(GroupingOf(FromQuery("bounds=1,2,4")).intervals, "bounds");
}

TEST(JsonWriter, LeavesNoLineInWhatIsEmpty) {
  JsonWriter json;
  json.BeginObject();
  json.Name("list");
  json.BeginArray();
  json.EndArray();
  json.Name("object");
  json.BeginObject();
  json.EndObject();
  json.EndObject();
  EXPECT_EQ(std::move(json).Take(), "{\n  \"list\": [],\n  \"object\": {}\n}");
}

}  // namespace
}  // namespace vexel
