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

// The programs of the README are the ones that are compiled and run.
TEST(Readme, ShowsTheExamplesThatRun) {
  const std::string root = std::string(VEXEL_SAMPLES_DIR) + "/../";
  for (const char* name : {"docs/example.cpp", "docs/example_engine.cpp"}) {
    const std::string example = Read(root + name);
    ASSERT_FALSE(example.empty()) << name;
    EXPECT_NE(Read(root + "README.md").find("```cpp\n" + example + "```"), std::string::npos)
        << name;
  }
}

}  // namespace
}  // namespace vexel::test
