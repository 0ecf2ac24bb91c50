// The program `vexel` while the system refuses or interrupts, and the user does.

#include "cli/cli_fixture.h"
#include "faults/calls/failing_calls.h"

namespace vexel::test {
namespace {

class ProgramCalls : public Cli {
 protected:
  RunResult CallFailing(const std::string& arguments, const std::string& order,
                        bool onTerminal = false) const {
    RunOptions options;
    options.onTerminal = onTerminal;
    options.input = data;
    options.environment = {"LD_PRELOAD=" VEXEL_FAILING_CALLS,
                           std::string(kFailingCalls) + '=' + order};
    return Call(arguments, options);
  }

  const std::string data = folder.Read("land.mdf");
};

TEST_F(ProgramCalls, ThatAreInterruptedOrCutShortGoOn) {
  for (const std::string arguments :
       {"render - --map land.map --level 2 -o page.gif --report -", "convert - -o again.mdf",
        "info land.mdf", "convert land.mdf -o -"}) {
    const std::string good = Call(arguments, {.input = data}).out;
    const std::string files = folder.Read("page.gif") + folder.Read("again.mdf");
    for (const char* order : {"read interrupted 1", "write interrupted 1", "write cut 1"}) {
      const RunResult done = CallFailing(arguments, order);
      EXPECT_EQ(done.status, 0) << arguments << ' ' << order << done.err;
      EXPECT_TRUE(done.out == good) << arguments << ' ' << order;
      EXPECT_TRUE(folder.Read("page.gif") + folder.Read("again.mdf") == files) << order;
    }
  }
}

TEST_F(ProgramCalls, ThatFailAtTheEndOfASaveLeaveTheOldFile) {
  Call("compile land.map -o whole.mpc");
  for (const auto& [arguments, output] :
       {std::pair<std::string, std::string>{"render land.mdf -o o.gif", "o.gif"},
        {"compile land.map -o o.mpc", "o.mpc"},
        {"decompile whole.mpc -o o.map", "o.map"},
        {"convert land.mdf -o o.mdf", "o.mdf"},
        {"tree land.map -o o.tree --base-url u", "o.tree"},
        {"render land.mdf -o /dev/null --html o.html", "o.html"},
        {"render land.mdf -o /dev/null --report o.json", "o.json"}}) {
    folder.Write(output, "old");
    const std::vector<std::string> before = folder.List();
    for (const char* order : {"write fails 1", "close fails 1", "rename fails 1"}) {
      const RunResult done = CallFailing(arguments, order);
      EXPECT_EQ(done.status, 1) << arguments << ' ' << order;
      EXPECT_TRUE(done.err.find(output) != std::string::npos ||
                  done.err.find("/data: cannot be written") != std::string::npos)
          << arguments << ' ' << order << done.err;
      EXPECT_EQ(folder.Read(output), "old") << order;
      EXPECT_EQ(folder.List(), before) << order;
    }
  }
}

// A map that takes several readings, with areas behind the first of them.
class ProgramProgress : public ProgramCalls {
 protected:
  ProgramProgress() {
    std::string map(kLandMap);
    const std::size_t at = map.find("100.0000 50.0000\n");
    std::string points;
    for (int i = 0; i < 60'000; ++i) points += "100.0000 50.0000\n";
    folder.Write("long.map", map.insert(at, points));
  }

  static constexpr int kTerminated = 128 + SIGINT;
};

TEST_F(ProgramProgress, EndsInABarThatGoesAgain) {
  const RunResult done = CallFailing("compile long.map", "read waits 4", true);
  EXPECT_EQ(done.status, 0);
  EXPECT_NE(
      done.out.find("\rvexel: Loading map file ... please wait [#########################] 100%"),
      std::string::npos)
      << done.out;
  EXPECT_TRUE(done.out.ends_with("\r\033[K")) << done.out;
  EXPECT_EQ(CallFailing("compile long.map", "read waits 4").err, "");
}

TEST_F(ProgramProgress, IsInterruptedWithoutATrace) {
  const std::vector<std::string> before = folder.List();
  const RunResult told = CallFailing("compile long.map", "read signal 4", true);
  EXPECT_EQ(told.status, 1);
  // On a busy machine half a bar came and went before it.
  EXPECT_TRUE(told.out.ends_with("vexel: long.map: Map file not loaded.\n")) << told.out;
  EXPECT_EQ(CallFailing("compile long.map", "read signal 4").status, kTerminated);
  EXPECT_EQ(folder.List(), before);
  // Behind the load the signal ends the program, once the file stands in its place.
  EXPECT_EQ(CallFailing("compile long.map", "write signal 1", true).status, kTerminated);
  EXPECT_TRUE(folder.Read("long.mpc").starts_with("Ortex 3.1\x1A"));
}

TEST_F(ProgramProgress, OfATerminalThatGetsNoPictureAndOnlyTheColoursItWants) {
  const RunOptions terminal{.onTerminal = true, .environment = {"TERM=xterm"}};
  EXPECT_EQ(Call("render land.mdf -o -", terminal).status, 2);
  EXPECT_NE(Call("palettes", terminal).out.find("\033[48;2;"), std::string::npos);
  for (const char* variable : {"NO_COLOR=1", "TERM=dumb"}) {
    const RunOptions plain{.onTerminal = true, .environment = {"TERM=xterm", variable}};
    EXPECT_EQ(Call("palettes", plain).out, Call("palettes").out) << variable;
  }
}

}  // namespace
}  // namespace vexel::test
