#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace vexel::test {
namespace {

std::string Read(const std::string& path) {
  std::ifstream file(path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// The program of the README is the one that is compiled and run.
TEST(Readme, ShowsTheExampleThatRuns) {
  const std::string root = std::string(VEXEL_SAMPLES_DIR) + "/../";
  const std::string example = Read(root + "docs/example.cpp");
  ASSERT_FALSE(example.empty());
  EXPECT_NE(Read(root + "README.md").find("```cpp\n" + example + "```"), std::string::npos);
}

}  // namespace
}  // namespace vexel::test
