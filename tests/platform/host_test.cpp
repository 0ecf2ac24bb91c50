#include "platform/host.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "platform/profile.h"
#include "support/recording_host.h"

namespace vexel::test {
namespace {

TEST(Host, IsEachThreadsOwn) {
  RecordingHost host;
  AfxMessageBox("here", 0x30, 0);
  std::thread([&] {
    EXPECT_NE(&CHost::GetCurrent(), &host);
    RecordingHost other;
    AfxMessageBox("there", 0, 0);
    EXPECT_EQ(other.boxes.size(), 1U);
  }).join();
  ASSERT_EQ(host.boxes.size(), 1U);
  EXPECT_EQ(host.boxes[0].text, "here");
  EXPECT_EQ(host.boxes[0].flags, 0x30U);
}

TEST(Host, GetsItsCursorBackFromAnOperationThatFails) {
  RecordingHost host;
  try {
    const WaitCursor cursor;
    EXPECT_EQ(host.waitCursors, 1);
    throw std::runtime_error("on the way");
  } catch (const std::runtime_error&) {
    EXPECT_EQ(host.waitCursors, 0);
  }
}

TEST(Profile, GivesSeparatorsOfOneByte) {
  struct Case {
    std::map<std::string, std::string> profile;
    char thousand, decimal;
  };
  for (const Case& c :
       {Case{{}, ',', '.'}, Case{{{"sThousand", ".x"}, {"sDecimal", ","}}, '.', ','},
        Case{{{"sThousand", ""}}, '?', '.'}, Case{{{"sDecimal", ""}}, ',', '!'},
        Case{{{"sThousand", "\u202F"}}, ' ', '.'}}) {
    RecordingHost host;
    host.profile = c.profile;
    const NumberSeparators separators = MachineSeparators({'?', '!'});
    EXPECT_EQ(separators.thousand, c.thousand);
    EXPECT_EQ(separators.decimal, c.decimal);
  }
}

}  // namespace
}  // namespace vexel::test
