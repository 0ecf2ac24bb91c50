#include "messages/messages.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "messages/remarks.h"

namespace vexel::test {
namespace {

TEST(Messages, FillInOrder) {
  EXPECT_EQ(FormatMessage(Message::sameSeparators, "50%d", "%s"),
            "50%d parameter must not be the same as %s parameter");
  EXPECT_EQ(FormatMessage(Message::badCoordinates, 12), "Bad coordinates at line 12");
  EXPECT_EQ(FormatMessage(Message::badCoordinates, 12, "more"), "Bad coordinates at line 12");
}

// What users read, and what scripts of theirs may look for.
TEST(Remarks, HaveTheirSentencesInOrder) {
  std::string sentences;
  for (const RemarkEntry& entry : AllRemarks()) {
    sentences += RemarkSentence({.kind = entry.kind,
                                 .found = "FOUND",
                                 .taken = "TAKEN",
                                 .expected = 3,
                                 .counted = 2,
                                 .reason = "REASON"}) +
                 '\n';
  }
  std::ifstream listed(VEXEL_TESTS_DIR "/messages/remarks.txt");
  EXPECT_EQ(sentences, std::string(std::istreambuf_iterator<char>(listed), {}));
}

TEST(Remarks, BecomeLinesWithWhatIsKnown) {
  RemarkInfo remark{.kind = RemarkKind::numberInPart, .found = "5%f", .taken = "5"};
  EXPECT_EQ(RemarkSentence(remark), "\"5%f\" is read as 5");
  remark.line = 7;
  remark.columnName = "x";
  EXPECT_EQ(RemarkSentence(remark), "line 7: x: \"5%f\" is read as 5");
  remark.file = "m.map";
  remark.area = "1, 2";
  remark.column = 3;
  EXPECT_EQ(RemarkSentence(remark), "m.map:7: area 1, 2, column 3 (x): \"5%f\" is read as 5");
  const std::string longText = std::string(79, 'y') + "\u00E9tail";
  remark = {.kind = RemarkKind::notUtf8, .found = longText};
  EXPECT_EQ(RemarkSentence(remark), '"' + std::string(79, 'y') + "...\" is no UTF-8");
}

}  // namespace
}  // namespace vexel::test
