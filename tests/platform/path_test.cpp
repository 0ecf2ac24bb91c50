#include "platform/path.h"

#include <gtest/gtest.h>

#include <string_view>

namespace vexel::test {
namespace {

TEST(Paths, SplitAtTheirLastSeparatorAndDot) {
  struct Case {
    std::string_view path, folder, name, extension;
  };
  for (const Case& c : {Case{"/a.b/c", "/a.b/", "c", ""}, Case{"d.tar.gz", "", "d.tar", ".gz"},
                        Case{"C:x\\y.mdf", "C:x\\", "y", ".mdf"}, Case{"C:y", "C:", "y", ""},
                        Case{"/d/run:10.mdf", "/d/", "run:10", ".mdf"}, Case{"", "", "", ""}}) {
    const PathParts parts = SplitPath(c.path);
    EXPECT_EQ(parts.folder, c.folder);
    EXPECT_EQ(parts.name, c.name);
    EXPECT_EQ(parts.extension, c.extension);
  }
}

}  // namespace
}  // namespace vexel::test
