// Maps from files of areas.

#include <gtest/gtest.h>
#include <vexel/map/map.h>

#include <random>

#include "importing.h"
#include "program.h"

namespace vexel::cli {
const Program kProgram{"vexel-import", "vexel import", "gif"};
}  // namespace vexel::cli

namespace vexel::import {

namespace {

constexpr const char* kGrouped = "--name name --key group,id --levels Land,Kreis";

TEST(ImportMap, HasTheTreeWithOutlinesForGroupsAndWhatLiesInHolesLast) {
  const Importing folder;
  const Account account = folder.Run("@areas.geojson " + std::string(kGrouped));
  EXPECT_EQ(folder.TreeOf("to.map"),
            "Land Kreis "
            "A (1) 6 hole 4 Ärea, one (1, 1) 4 hole 4 Two (1, 2) 4 end "
            "B (2) 4 4 Three (2, 3) 4 Four (2, 4) 4 end ");
  EXPECT_EQ(
      folder.Read("to.keys.csv"),
      "level,key,value,code,name\n1,1,A,1,A\n2,\"1,1\",01,1,\"Ärea, one\"\n2,\"1,2\",02,2,Two\n"
      "1,2,B,2,B\n2,\"2,3\",03,3,Three\n2,\"2,4\",04,4,Four\n");
  EXPECT_EQ(account.map->dissolved, 2U);
  EXPECT_TRUE(account.map->inDegrees);
  EXPECT_FALSE(account.HasLoss());

  folder.Run("@areas.geojson --name name --key id --force");
  EXPECT_EQ(folder.TreeOf("to.map"), "id Ärea, one (1) 4 hole 4 Two (2) 4 Three (3) 4 Four (4) 4 ");
  // The one in the hole has the lower code here.
  folder.Write("turned.geojson",
               Importing::Collection({Importing::Feature("", "1", "In", Importing::Square(2, 2, 2)),
                                      Importing::Feature("", "2", "Out",
                                                         Importing::Square(0, 0, 6) + "," +
                                                             Importing::Square(2, 2, 2, true))}));
  folder.Run("@turned.geojson --name name --key id --force");
  EXPECT_EQ(folder.TreeOf("to.map"), "id Out (2) 4 hole 4 In (1) 4 ");
  folder.Run("@areas.geojson --no-dissolve --force " + std::string(kGrouped));
  EXPECT_NE(folder.TreeOf("to.map").find("A (1) Ärea, one"), std::string::npos);
}

TEST(ImportMap, IsTheSameFromEachFormat) {
  const Importing folder;
  folder.Run("@areas.geojson --var n " + std::string(kGrouped));
  const std::string map = folder.Read("to.map");
  const std::string data = folder.Read("to.mdf");
  for (const auto& [driver, file] :
       {std::pair{"ESRI Shapefile", "areas.shp"}, std::pair{"GPKG", "areas.gpkg"},
        std::pair{"FlatGeobuf", "areas.fgb"}}) {
    folder.Convert(driver, file);
    folder.Run("@" + std::string(file) + " --force --var n " + kGrouped);
    EXPECT_EQ(folder.Read("to.map"), map) << driver;
    EXPECT_EQ(folder.Read("to.mdf"), data) << driver;
  }
  folder.Write("areas.topojson", R"({"type":"Topology","arcs":[[[0,0],[6,0],[6,6],[0,6],[0,0]],
      [[2,2],[2,4],[4,4],[4,2],[2,2]],[[6,0],[12,0],[12,6],[6,6],[6,0]],
      [[12,0],[18,0],[18,6],[12,6],[12,0]]],"objects":{"areas":{"type":"GeometryCollection",
      "geometries":[{"type":"Polygon","arcs":[[0],[1]],"id":"01","properties":{"name":"Ärea, one"}},
      {"type":"Polygon","arcs":[[2]],"id":"02","properties":{"name":"Two"}},
      {"type":"Polygon","arcs":[[3]],"id":"03","properties":{"name":"Three"}},
      {"type":"Polygon","arcs":[[-2]],"id":"04","properties":{"name":"Four"}}]}}})");
  folder.Run("@areas.geojson --force --name name --key id");
  const std::string flat = folder.Read("to.map");
  folder.Run("@areas.topojson --force --name name --key id");
  EXPECT_EQ(folder.Read("to.map"), flat);
}

TEST(ImportMap, TakesTheTextsOfAShapefileInTheEncodingThatFits) {
  const Importing folder;
  for (const auto& [option, encoding] :
       {std::pair{"ENCODING=UTF-8", "utf-8"}, std::pair{"ENCODING=ISO-8859-1", "windows-1252"}}) {
    folder.Convert("ESRI Shapefile", "areas.shp", option);
    folder.Run("@areas.shp --name name --key id --force");
    EXPECT_NE(folder.Read("to.map").find("Name=Ärea, one\n"), std::string::npos);
    std::filesystem::remove(folder.Path("areas.cpg"));
    std::string table = folder.Read("areas.dbf");
    table[29] = 0;  // the code page
    folder.Write("areas.dbf", table);
    const Account account = folder.Run("@areas.shp --name name --key id --force");
    EXPECT_NE(folder.Read("to.map").find("Name=Ärea, one\n"), std::string::npos);
    ASSERT_EQ(account.notes.size(), 1U);
    EXPECT_NE(account.notes.front().find("read as " + std::string(encoding)), std::string::npos);
  }
  folder.Run("@areas.shp --name name --key id --force --encoding iso-8859-2");
  EXPECT_NE(folder.Read("to.map").find("Name=Ärea, one\n"), std::string::npos);
  std::filesystem::remove(folder.Path("areas.dbf"));
  EXPECT_NE(folder.Refusal("@areas.shp --name name --key id --force").find("areas.dbf is missing"),
            std::string::npos);
}

TEST(ImportMap, JoinsFilesOfSeveralLevelsAndFeaturesOfOneKey) {
  const Importing folder;
  folder.Write(
      "lands.geojson",
      Importing::Collection({Importing::Feature("A", "A", "Land A", Importing::Square(0, 0, 6)),
                             Importing::Feature("A", "A", "Isle", Importing::Square(0, 20, 1)),
                             Importing::Feature("", "", "Nowhere", Importing::Square(0, 30, 1))}));
  const Account account =
      folder.Run("@lands.geojson @areas.geojson --name name --key group --key group,id");
  EXPECT_EQ(folder.TreeOf("to.map"),
            "group id Land A (1) 4 4 Ärea, one (1, 1) 4 hole 4 Two (1, 2) 4 end "
            "B (2) 4 4 Three (2, 3) 4 Four (2, 4) 4 end ");
  EXPECT_EQ(account.map->flaws.Of(Flaw::sameKey).names, std::vector<std::string>{"Isle"});
  EXPECT_EQ(account.map->flaws.Of(Flaw::unkeyed).names, std::vector<std::string>{"Nowhere"});
  folder.Run("@areas.geojson --force --name name --key id:1,id --name-of 1=group");
  EXPECT_TRUE(folder.TreeOf("to.map").starts_with("id:1 id A (0) "));
}

TEST(ImportMap, RepairsWhatItCanAndTellsOfAll) {
  const Importing folder;
  const auto feature = [](const char* id, const std::string& rings) {
    return Importing::Feature("", id, "N" + std::string(id), rings);
  };
  folder.Write(
      "odd.geojson",
      Importing::Collection(
          {feature("1",
                   Importing::Ring({{0, 0}, {2, 2}, {2, 0}, {0, 2}, {0, 0}})),  // crosses itself
           feature("2", Importing::Ring({{5, 5}, {6, 6}, {5, 5}})),
           feature("3",
                   Importing::Square(0, 5, 3) + "," + Importing::Ring({{1, 6}, {2, 6}, {1, 6}})),
           feature("4", Importing::Ring({{179, 0}, {-179, 0}, {-179, 2}, {179, 2}, {179, 0}})),
           feature("5", Importing::Square(10, 5, 3)),
           R"({"type":"Feature","properties":{"id":"6","name":"N6"},"geometry":null})",
           R"({"type":"Feature","properties":{"id":"7","name":"N7"},)"
           R"("geometry":{"type":"Point","coordinates":[1,1]}})",
           feature("8",
                   Importing::Ring({{-180, -70}, {-60, -75}, {60, -70}, {180, -70}, {-180, -70}})),
           feature("9", "[[1,1],[1e400,1],[2,1],[2,2],[1,1]]")}));
  const Account account = folder.Run("@odd.geojson --name name --key id");
  EXPECT_EQ(folder.TreeOf("to.map"),
            "id N1 (1) 3 3 N3 (3) 4 N4 (4) 4 4 N5 (5) 4 N8 (8) 9 N9 (9) 3 ");
  const Flaws& flaws = account.map->flaws;
  using Names = std::vector<std::string>;
  EXPECT_EQ(flaws.Of(Flaw::crossing).names, Names{"N1"});
  EXPECT_EQ(flaws.Of(Flaw::shortRing).names, (Names{"N2", "N3"}));
  EXPECT_EQ(flaws.Of(Flaw::dateLine).names, (Names{"N4", "N8"}));
  EXPECT_EQ(flaws.Of(Flaw::empty).names, (Names{"N2", "N6"}));
  EXPECT_EQ(flaws.Of(Flaw::notFinite).names, Names{"N9"});
  EXPECT_EQ(flaws.Of(Flaw::notPolygon).names, Names{"N7"});
}

TEST(ImportMap, ProjectsWhereAskedAndKnowsWhatAPlaneIs) {
  const Importing folder;
  folder.Run("@areas.geojson --name name --key id --crs EPSG:3857");
  const std::string map = folder.Read("to.map");
  EXPECT_NE(map.find("LongLat=No"), std::string::npos);
  EXPECT_NE(map.find("\n667916.94 0\n"), std::string::npos);  // 6 degrees on the radius 6378137
  folder.Write("plane.geojson", Importing::Collection({Importing::Feature(
                                    "", "1", "One", Importing::Square(1000, 1000, 500))}));
  const Account account = folder.Run("@plane.geojson --name name --key id --force");
  EXPECT_FALSE(account.map->inDegrees);
  EXPECT_EQ(account.notes.size(), 1U);
  folder.Run("@plane.geojson --name name --key id --force --source-crs EPSG:3857 --crs EPSG:4326");
  EXPECT_NE(folder.Read("to.map").find("LongLat=Yes"), std::string::npos);
}

TEST(ImportMap, CompilesTheMapThatItWrites) {
  const Importing folder;
  const Account account = folder.Run("@areas.geojson --compile " + std::string(kGrouped));
  cli::CliHost host;
  const CurrentHost current(host);
  CVELAMap text;
  CVELAMap compiled;
  ASSERT_NE(text.Build(CString(folder.Path("to.map")), 0, 0), 0);
  ASSERT_NE(compiled.Build(CString(folder.Path("to.mpc")), 0, 0), 0);
  int nodes = 0;
  compiled.Count(nodes);
  EXPECT_EQ(nodes, 7);
  EXPECT_EQ(text.GetBoundRect(), compiled.GetBoundRect());
  // Of the two the one written last is loaded.
  EXPECT_EQ(account.files, (std::vector<std::string>{folder.Path("to.map"), folder.Path("to.mpc"),
                                                     folder.Path("to.keys.csv")}));
}

TEST(ImportMap, RefusesWithTheFixAndWritesNothing) {
  const Importing folder;
  folder.Write("broken.geojson", R"({"type":"FeatureCollection","features":[{"type")");
  folder.Write("table.csv", "id,n\n1,2\n");
  folder.Write("text.shp", "no");
  folder.Write("kept.mpc", "");
  const std::vector<std::string> before = folder.List();
  const struct {
    const char* words;
    const char* said;
  } kCases[] = {
      {"@areas.geojson --name Nme --key id",
       "areas.geojson has no field \"Nme\"; did you mean name?"},
      {"@areas.geojson --name name --key code",
       "areas.geojson has no field \"code\"; it has group, id, name, n"},
      {"@areas.geojson", "--key is missing"},
      {"@areas.geojson --key group,id --levels One", "--levels: 1 name for 2 levels"},
      {"@areas.geojson --key id --name-of 3=name", "there is no level \"3\"; there are id"},
      {"@areas.geojson --key id --layer more", "areas.geojson has no layer \"more\"; it has areas"},
      {"@areas.geojson --key id --crs EPSG:99999", "is no coordinate system such as EPSG:5070"},
      {"@areas.geojson --key id --crs @areas.geojson", "is no coordinate system"},
      {"@areas.geojson --key id --simplify 0", "\"0\" is not above 0"},
      {"@areas.geojson --key id --table @table.csv", "--table needs --join"},
      {"@areas.geojson --key id --table @table.csv --join id=no",
       "areas.geojson has no field \"no\""},
      {"@areas.geojson --key id --var name", "\"Ärea, one\" is no number"},
      {"@areas.geojson --key id --map @to.map", "--map and AREAS are two maps"},
      {"@areas.geojson --key id --loose", "--loose needs a --table"},
      {"--map @to.map --table @table.csv --join id --simplify 2", "--simplify is for AREAS"},
      {"@broken.geojson --key id", "broken.geojson: cannot be read"},
      {"@table.csv --key id", "looks like a table of comma-separated or similar values"},
      {"@text.shp --key id", "text.shx is missing; a Shapefile is several files of one name"},
      {"@none.geojson --key id", "none.geojson"},
      {"/vsizip/@areas.geojson --key id", "only files of this machine are read"},
      {"http://localhost/a.json --key id", "only files of this machine are read"},
      {"@ --key id", "is a folder, not a file"},
  };
  for (const auto& [words, said] : kCases) {
    EXPECT_NE(folder.Refusal(words).find(said), std::string::npos)
        << words << ": " << folder.Refusal(words);
  }
  EXPECT_EQ(folder.List(), before);
  folder.Run("@areas.geojson --name name --key id");
  EXPECT_EQ(folder.Refusal("@areas.geojson --name name --key id"),
            "to.map: is there already; --force replaces it");
  const std::string kept = folder.Read("to.map");
  folder.Write("odd.geojson", Importing::Collection({Importing::Feature("", "1", "x", "[]")}));
  folder.Refusal("@odd.geojson --name name --key id --force");
  EXPECT_EQ(folder.Read("to.map"), kept);
}

TEST(ImportMap, SurvivesBytesThatAreLostOrChanged) {
  const Importing folder;
  folder.Convert("ESRI Shapefile", "areas.shp");
  folder.Convert("FlatGeobuf", "areas.fgb");
  std::mt19937 random(7);
  for (const std::string name : {"areas.geojson", "areas.shp", "areas.dbf", "areas.fgb"}) {
    const std::string whole = folder.Read(name);
    const std::string opened = name == "areas.dbf" ? "areas.shp" : name;
    for (int i = 0; i < 60; ++i) {
      std::string damaged = whole;
      if (i % 3 == 0) damaged.resize(random() % whole.size());
      for (int k = 0; k < i % 5 && !damaged.empty(); ++k) {
        damaged[random() % damaged.size()] = static_cast<char>(random());
      }
      folder.Write(name, damaged);
      const std::string said =
          folder.Refusal("@" + opened + " --key id --force --compile --crs EPSG:3857");
      EXPECT_EQ(said.find('\n'), std::string::npos) << said;
    }
    folder.Write(name, whole);
  }
}

}  // namespace

}  // namespace vexel::import
