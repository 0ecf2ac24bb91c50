#include "messages/messages.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

namespace vexel::test {
namespace {

TEST(Messages, FillInOrderAndKnowEveryNumber) {
  EXPECT_EQ(FormatMessage(Message::sameSeparators, "50%d", "%s"),
            "50%d parameter must not be the same as %s parameter");
  EXPECT_EQ(FormatMessage(Message::badCoordinates, 12), "Bad coordinates at line 12");
  EXPECT_EQ(FormatMessage(Message::badCoordinates, 12, "more"), "Bad coordinates at line 12");
  std::set<std::string_view> texts;
  for (int number = 16000; number < 16110; ++number) {
    const bool known = number <= 16033 ? number != 16015 && number != 16017 && number != 16019
                                       : number >= 16101 && number <= 16107;
    const auto text = MessageText(static_cast<Message>(number));
    EXPECT_EQ(text != "Unknown message %d", known) << number << ' ' << text;
    EXPECT_TRUE(!known || texts.insert(text).second) << text;
  }
}

}  // namespace
}  // namespace vexel::test
