#include "brindle/specfile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/files.h"

namespace vexel::test {
namespace {

class SpecFileTest : public testing::Test {
 protected:
  // All lines as "number:command>argument", the argument only where there is one.
  std::vector<std::string> Lines(const std::string& bytes) {
    Open(bytes);
    std::vector<std::string> lines;
    CVELAString command;
    CVELAString argument;
    while (file.GetLine(command, argument, true) == 0) {
      std::string text = std::to_string(file.lineNumber) + ':' + std::string(command.View());
      if (!argument.IsEmpty()) text.append(">").append(argument.View());
      lines.push_back(text);
    }
    EXPECT_EQ(file.state, 2U);
    EXPECT_EQ(file.GetPosition(), file.GetLength());
    return lines;
  }
  void Open(const std::string& bytes) {
    dir.Write("f", bytes);
    ASSERT_NE(file.Open(dir.Path("f").c_str(), 0), 0);
  }
  std::string Next() {
    CVELAString command;
    CVELAString argument;
    return file.GetLine(command, argument, true) == 0 ? std::string(command.View()) : "end";
  }

  TempDir dir;
  CSpecFile file{0};
};

using Texts = std::vector<std::string>;

TEST_F(SpecFileTest, TellsKeywordsFromLinesThatComeWhole) {
  EXPECT_EQ(
      Lines("Name = a b \nName=a=b\nN_1 =x\n[Map] \n12 3\n-1=2\n.5=x\n+a=b\nName=a\tb\n"
            "No value\nEmpty=\n9a=b\n[a=b]\n x=1\n"),
      (Texts{"1:Name>a b", "2:Name>a=b", "3:N_1>x", "4:[Map]", "5:12 3", "6:-1=2", "7:.5=x",
             "8:+a=b", "9:Name=a\tb", "10:No value", "11:Empty", "12:9a=b", "13:[a=b]", "14:x>1"}));
}

TEST_F(SpecFileTest, EveryLineEndCountsOnceAndBlankLinesAreOnlyCounted) {
  EXPECT_EQ(Lines("\xEF\xBB\xBF"
                  "a\nb\r\nc\rd\n\n \t\r\n\r\re\n\r f\xEF\xBB\xBF"),
            (Texts{"1:a", "2:b", "3:c", "4:d", "9:e", "11:f\xEF\xBB\xBF"}));
  EXPECT_EQ(Lines(""), Texts{});
  EXPECT_EQ(Lines("\n\n"), Texts{});
  EXPECT_EQ(Lines("\xEF\xBB\xBF"), Texts{});
}

// Lines of every length straddle the blocks in which the file is read.
TEST_F(SpecFileTest, BlanksAndTabsAtTheEndsOfALineMeanNothingButInTheRowOfATable) {
  EXPECT_EQ(
      Lines(" \t[Map]\t \n\tName = a b\t\n  1 2 \t\n\t 1\t2 \t\n [a\tb] \n\tName=a\tb\n"),
      (Texts{"1:[Map]", "2:Name>a b", "3:1 2", "4:\t 1\t2 \t", "5: [a\tb] ", "6:\tName=a\tb"}));
}

TEST_F(SpecFileTest, BlocksDoNotShow) {
  for (const std::string end : {"\n", "\r", "\r\n"}) {
    std::string bytes;
    Texts expected;
    for (int i = 0; bytes.size() < 600'000; ++i) {
      const std::string text = "x" + std::string(static_cast<std::size_t>(i % 700), 'y');
      expected.push_back(std::to_string(i + 1) + ':' + text);
      bytes += text + end;
    }
    EXPECT_EQ(Lines(bytes), expected);
  }
  constexpr std::size_t kBlock = 128 * 1024;
  for (std::size_t size = kBlock - 3; size <= kBlock + 3; ++size) {
    for (const std::string end : {"", "\n", "\r", "\r\n"}) {
      const std::string head = "a\rb\r";
      const std::string text(size - head.size() - end.size(), 'z');
      EXPECT_EQ(Lines(head + text + end), (Texts{"1:a", "2:b", "3:" + text})) << size;
      if (end.empty()) continue;
      EXPECT_EQ(Lines(head + text + end + "c"), (Texts{"1:a", "2:b", "3:" + text, "4:c"})) << size;
    }
  }
  const std::string longLine(1'000'000, 'w');
  EXPECT_EQ(Lines(longLine + "\nend"), (Texts{"1:" + longLine, "2:end"}));
}

TEST_F(SpecFileTest, GivesLinesBackAndSkipsSections) {
  Open("a\nb\n[c]\nd\n[e]\nf\n");
  EXPECT_EQ(Next(), "a");
  file.UngetLine();
  EXPECT_EQ(Next(), "a");
  EXPECT_EQ(file.lineNumber, 1);
  file.SkipSection();
  EXPECT_EQ(Next(), "[c]");
  file.UngetLine();
  file.SkipSection();
  EXPECT_EQ(Next(), "[e]");
  file.SkipSection();
  EXPECT_EQ(file.state, 0U);
  EXPECT_EQ(Next(), "end");
  file.UngetLine();
  EXPECT_EQ(Next(), "end");
}

TEST_F(SpecFileTest, OpenedAgainItRemembersNothing) {
  Open("a\nb\n");
  Next();
  Open("c\rd\n");
  file.UngetLine();
  EXPECT_EQ(Next(), "c");
  EXPECT_EQ(file.lineNumber, 1);
  EXPECT_EQ(file.GetPosition(), 2);
  file.Close();
  file.UngetLine();
  EXPECT_EQ(Next(), "end");
}

TEST_F(SpecFileTest, EndsInFailureAtALineThatNoFileHolds) {
  dir.Write("f", "a\n");
  std::filesystem::resize_file(dir.Path("f"), 65 << 20);
  ASSERT_NE(file.Open(dir.Path("f").c_str(), 0), 0);
  EXPECT_EQ(Next(), "a");
  EXPECT_FALSE(file.HasFailed());
  EXPECT_EQ(Next(), "end");
  EXPECT_TRUE(file.HasFailed());
}

TEST_F(SpecFileTest, ReadsBackWhatItPuts) {
  ASSERT_NE(file.Open(dir.Path("f").c_str(), 1), 0);
  file.PutLine("[Head]");
  file.PutLine("Name", "Do\u00F1a \"Ana\" = x");
  file.PutLine("Tab", "a\tb\rc");
  file.PutLine("");
  file.PutLine("Count", -12);
  EXPECT_NE(file.Close(), 0);
  EXPECT_EQ(Lines(dir.Read("f")),
            (Texts{"1:[Head]", "2:Name>Do\u00F1a \"Ana\" = x", "3:Tab>a b c", "5:Count>-12"}));
}

}  // namespace
}  // namespace vexel::test
