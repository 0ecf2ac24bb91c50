#include "platform/archive.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/exceptions.h"
#include "support/files.h"

namespace vexel::test {
namespace {

constexpr unsigned kWrite = CFile::modeCreate | CFile::modeWrite;

class ArchiveTest : public testing::Test {
 protected:
  template <typename Store>
  std::string Stored(Store store) {
    CFile file;
    EXPECT_NE(file.Open(dir.Path("a").c_str(), kWrite), 0);
    CArchive ar(&file, CArchive::store);
    store(ar);
    ar.Close();
    EXPECT_NE(file.Close(), 0);
    return dir.Read("a");
  }
  template <typename Load>
  void Loaded(const std::string& bytes, Load load) {
    dir.Write("b", bytes);
    CFile file;
    ASSERT_NE(file.Open(dir.Path("b").c_str(), CFile::modeRead), 0);
    CArchive ar(&file, CArchive::load, 16);
    load(ar);
  }
  TempDir dir;
};

TEST_F(ArchiveTest, CountedStringsTakeTheShortestLength) {
  const std::vector<std::pair<std::size_t, std::string>> cases{
      {0, std::string(1, '\0')},
      {254, "\xFE"},
      {255, std::string("\xFF\xFF\0", 3)},
      {0xFFFD, "\xFF\xFD\xFF"},
      {0xFFFE, std::string("\xFF\xFF\xFF\xFE\xFF\0\0", 7)},
      {200'000, std::string("\xFF\xFF\xFF\x40\x0D\x03\0", 7)}};
  for (const auto& [length, head] : cases) {
    const std::string text(length, 'n');
    const std::string bytes = Stored([&](CArchive& ar) { ar << CString(text.c_str()); });
    EXPECT_EQ(bytes, head + text) << length;
    Loaded(bytes, [&](CArchive& ar) {
      CString again;
      ar >> again;
      EXPECT_EQ(again.View(), text);
    });
  }
}

TEST_F(ArchiveTest, WideStringsBecomeUtf8) {
  const std::string bytes("\xFF\xFE\xFF\x05\x41\0\xF1\0\x2D\x4E\x3D\xD8\x5E\xDE", 14);
  Loaded(bytes, [](CArchive& ar) {
    CString text;
    ar >> text;
    EXPECT_EQ(text, "A\u00F1\u4E2D\U0001F65E");
  });
}

TEST_F(ArchiveTest, HalvesOfASurrogatePairAreMarked) {
  const std::string bytes("\xFF\xFE\xFF\x04\x5E\xDE\x3D\xD8\x41\0\x3D\xD8", 12);
  Loaded(bytes, [](CArchive& ar) {
    CString text;
    ar >> text;
    EXPECT_EQ(text, "\uFFFD\uFFFDA\uFFFD");
  });
}

}  // namespace
}  // namespace vexel::test
