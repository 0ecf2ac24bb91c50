#include "support/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <limits>
#include <stdexcept>

#include "platform/archive.h"
#include "platform/exceptions.h"
#include "platform/file.h"

namespace vexel::test {
namespace {

constexpr unsigned kWrite = CFile::modeCreate | CFile::modeWrite;

TEST(File, ReplacesItsTargetOnlyWhenClosed) {
  const TempDir dir;
  dir.Write("a", "old");
  CFile file;
  ASSERT_NE(file.Open(dir.Path("a").c_str(), kWrite), 0);
  const std::string large(1'000'000, 'x');
  file.Write("new", 3);
  file.Write(large.data(), large.size());
  EXPECT_EQ(dir.Read("a"), "old");
  EXPECT_NE(file.Close(), 0);
  EXPECT_EQ(dir.Read("a"), "new" + large);
  ASSERT_NE(file.Open(dir.Path("a").c_str(), kWrite), 0);
  file.Write("gone", 4);
  file.Abort();
  EXPECT_EQ(dir.Read("a").size(), 1'000'003U);
  EXPECT_EQ(dir.List(), std::vector<std::string>{"a"});
}

TEST(File, DestructionKeepsWhatWasWrittenUnlessAnExceptionPasses) {
  const TempDir dir;
  const auto write = [&](bool fails) {
    CStdioFile file;
    ASSERT_NE(file.Open(dir.Path("a").c_str(), kWrite), 0);
    file.WriteString(fails ? "torn" : "whole");
    if (fails) throw std::runtime_error("in the middle");
  };
  write(false);
  EXPECT_EQ(dir.Read("a"), "whole");
  EXPECT_THROW(write(true), std::runtime_error);
  EXPECT_EQ(dir.Read("a"), "whole");
  EXPECT_EQ(dir.List(), std::vector<std::string>{"a"});
}

TEST(File, KeepsLinksAndPermissionsAndRefusesFolders) {
  const TempDir dir;
  dir.Write("real", "old");
  ::chmod(dir.Path("real").c_str(), 0640);
  std::filesystem::create_symlink("real", dir.Path("link"));
  std::filesystem::create_symlink("later", dir.Path("dangling"));
  for (const char* name : {"link", "dangling"}) {
    CFile file;
    ASSERT_NE(file.Open(dir.Path(name).c_str(), kWrite), 0);
    file.Write("new", 3);
    EXPECT_NE(file.Close(), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(dir.Path(name)));
  }
  EXPECT_EQ(dir.Read("real"), "new");
  EXPECT_EQ(dir.Read("later"), "new");
  struct stat status {};
  ASSERT_EQ(::stat(dir.Path("real").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0640U);
  CFile file;
  EXPECT_EQ(file.Open(dir.Path("").c_str(), CFile::modeRead), 0);
  EXPECT_EQ(file.Open(dir.Path("").c_str(), kWrite), 0);
  EXPECT_EQ(file.Open(dir.Path("none/a").c_str(), kWrite), 0);
  EXPECT_EQ(file.Open(dir.Path("none").c_str(), CFile::modeRead), 0);
}

TEST(File, FullDeviceShowsWhenWritingAndWhenClosing) {
  CFile file;
  ASSERT_NE(file.Open("/dev/full", kWrite), 0);
  file.Write("x", 1);
  EXPECT_EQ(file.Close(), 0);
  CStdioFile text;
  ASSERT_NE(text.Open("/dev/full", kWrite), 0);
  EXPECT_THROW(text.WriteString(std::string(1'000'000, 'x')), CFileException);
}

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

TEST_F(ArchiveTest, ValuesAreLittleEndianWithoutAlignment) {
  const std::string bytes = Stored([](CArchive& ar) {
    ar << std::uint8_t{1} << std::int32_t{-2} << 1.0F << std::uint16_t{0x1234};
  });
  EXPECT_EQ(bytes, std::string("\x01\xFE\xFF\xFF\xFF\0\0\x80\x3F\x34\x12", 11));
}

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

TEST_F(ArchiveTest, EveryCutEndsInTheEndOfTheFile) {
  const std::string bytes = Stored([](CArchive& ar) {
    ar << 7 << CString(std::string(300, 'x').c_str()) << 2.5 << CString("end");
  });
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    Loaded(bytes.substr(0, length), [&](CArchive& ar) {
      int number = 0;
      double value = 0;
      CString text;
      try {
        ar >> number >> text >> value >> text;
        ADD_FAILURE() << length;
      } catch (const CArchiveException& early) {
        EXPECT_EQ(early.cause, CArchiveException::endOfFile);
      }
    });
  }
  // A length that the file cannot have takes no memory for it.
  Loaded("\xFF\xFF\xFF\xFF\xFF\xFF\x7Fshort", [](CArchive& ar) {
    CString text;
    EXPECT_THROW(ar >> text, CArchiveException);
  });
}

}  // namespace
}  // namespace vexel::test
