// What the tests of the command line share: a folder with a small map and its data, and short ways
// to call the program there.

#ifndef VEXEL_TESTS_CLI_CLI_FIXTURE_H_
#define VEXEL_TESTS_CLI_CLI_FIXTURE_H_

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/files.h"
#include "support/run.h"

namespace vexel::test {

using Json = nlohmann::json;

inline const std::string kSample = std::string(VEXEL_SAMPLES_DIR) + "/us-counties";

inline std::vector<std::string> Cut(const std::string& text, char mark) {
  std::vector<std::string> parts;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, mark);) parts.push_back(part);
  return parts;
}

inline std::size_t CountOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
  return count;
}

// North with two units, one in two pieces and one without data, and South with one.
inline constexpr std::string_view kLandMap =
    "[Map]\nVersion=Ortex 3.2\nMapName=Land\nLongLat=No\n\n"
    "[AreaLevels]\nName=Region\nName=District\n\n"
    "[GeoGroup]\nName=North\nAreaStructure=1\n\n"
    "[Polygon]\n0.0000 50.0000\n100.0000 50.0000\n100.0000 100.0000\n0.0000 100.0000\n\n"
    "[GeoUnit]\nName=Tom & \"Jerry\" <b>\u00FC\nAreaStructure=1, 1\n\n"
    "[Polygon]\n0.0000 50.0000\n40.0000 50.0000\n40.0000 100.0000\n0.0000 100.0000\n\n"
    "[Polygon]\n80.0000 50.0000\n100.0000 50.0000\n100.0000 100.0000\n80.0000 100.0000\n\n"
    "[GeoUnit]\nName=Bare\nAreaStructure=1, 2\n\n"
    "[Polygon]\n40.0000 50.0000\n80.0000 50.0000\n80.0000 100.0000\n40.0000 100.0000\n\n"
    "[EndGroup]\n\n"
    "[GeoGroup]\nName=South\nAreaStructure=2\n\n"
    "[Polygon]\n0.0000 0.0000\n100.0000 0.0000\n100.0000 50.0000\n0.0000 50.0000\n\n"
    "[GeoUnit]\nName=All\nAreaStructure=2, 1\n\n"
    "[Polygon]\n0.0000 0.0000\n100.0000 0.0000\n100.0000 50.0000\n0.0000 50.0000\n\n"
    "[EndGroup]\n";

inline std::string DataFor(const std::string& map, const std::string& rows) {
  return "[MapDataFile]\nVersion=Ortex 3.2\nMapFile=" + map +
         "\nAreaLevels=2\nVariables=2\nThousands=Comma\nDecimal=Dot\nNoValue=N/A\nMapLabel=~\n\n"
         "[Data]\nRegion\tDistrict\tArea Name\tBirths\tDeaths\n" +
         rows;
}

inline const std::string kLandRows =
    "1\tX\t~\t30\t2.5\n1\t1\t~\t10\t1.5\n1\t2\t~\tN/A\t1.0\n2\tX\t~\t50\t4.0\n2\t1\t~\t50\t4.0\n";

class Cli : public testing::Test {
 protected:
  Cli() {
    folder.Write("land.map", kLandMap);
    folder.Write("land.mdf", DataFor("land", kLandRows));
  }

  // Calls the program in the folder with arguments that stand with single blanks between.
  RunResult Call(const std::string& arguments, RunOptions options = {}) const {
    options.folder = folder.Path("");
    return RunProgram(VEXEL_CLI, Cut(arguments, ' '), options);
  }

  // The report of a page that must succeed.
  Json Report(const std::string& arguments, const RunOptions& options = {}) const {
    const RunResult done = Call("render " + arguments + " -o page.gif --report - --quiet", options);
    EXPECT_EQ(done.status, 0) << done.err;
    return Json::parse(done.out, nullptr, false);
  }

  TempDir folder;
};

}  // namespace vexel::test

#endif  // VEXEL_TESTS_CLI_CLI_FIXTURE_H_
