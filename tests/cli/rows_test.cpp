// Rows that belong nowhere.

#include <utility>

#include "cli_fixture.h"

namespace vexel::test {
namespace {

TEST_F(Cli, NamesTheRowsThatFoundNoArea) {
  folder.Write("one.mdf", DataFor("land", kLandRows + "7\t1\t~\t1\t1\n"));
  std::string rows = kLandRows;
  for (const char* code : {"7", "8", "9", "10", "11", "12"}) {
    rows += std::string(code) + "\t1\tFar\t1\t1\n";
  }
  folder.Write("six.mdf", DataFor("land", rows));
  const std::string one = "1 row found no area: 7, 1\n";
  const std::string six =
      "6 rows found no area: 7, 1 (Far); 8, 1 (Far); 9, 1 (Far); 10, 1 (Far); 11, 1 (Far); ...\n";
  for (const auto& [file, told] : {std::pair("one", one), std::pair("six", six)}) {
    const std::string data = std::string(file) + ".mdf";
    for (const std::string& command : {"info " + data, "convert " + data + " -o out.mdf"}) {
      const RunResult done = Call(command);
      EXPECT_EQ(done.status, 0) << command;
      EXPECT_NE((done.out + done.err).find(told), std::string::npos) << done.out << done.err;
    }
  }
}

}  // namespace
}  // namespace vexel::test
