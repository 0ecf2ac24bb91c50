// The program `vexel` while memory fails, at allocations all over each command.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "cli/cli_fixture.h"
#include "faults/memory/failing_memory.h"

namespace vexel::test {
namespace {

struct CommandLine {
  const char* name;
  const char* arguments;
  std::vector<std::string> outputs;
  long stride;  // how far apart are the allocations that fail
};

class ProgramMemory : public Cli, public testing::WithParamInterface<CommandLine> {
 protected:
  ProgramMemory() {
    Call("compile land.map -o land.mpc");
    std::filesystem::create_directory(folder.Path("between"));
  }

  RunResult CallFailing(const std::string& how) const {
    RunOptions options;
    options.environment = {"LD_PRELOAD=" VEXEL_FAILING_MEMORY, "TMPDIR=between",
                           std::string(kFailingVariable) + '=' + how};
    return Call(GetParam().arguments, options);
  }

  // The number of allocations that a call has left in the file "count".
  long TakeCount() const {
    const std::string text = folder.Read("count");
    std::filesystem::remove(folder.Path("count"));
    return text.empty() ? 0 : std::stol(text);
  }

  void PutOld() const {
    for (const std::string& name : GetParam().outputs) folder.Write(name, kOld);
  }

  std::map<std::string, std::string> Outputs() const {
    std::map<std::string, std::string> found;
    for (const std::string& name : GetParam().outputs) found[name] = folder.Read(name);
    return found;
  }

  // The allocations that fail: some all over the command and, where files take their places at the
  // end, each of the last.
  static std::vector<long> Numbers(long count, bool withEnd) {
    constexpr long kEnd = 40;
    const CommandLine& command = GetParam();
    std::vector<long> numbers;
    for (long number = 1; number <= count; ++number) {
      const bool isAtEnd = withEnd && !command.outputs.empty() && number > count - kEnd;
      const long start = withEnd ? 1 : 1 + command.stride / 2;
      if (isAtEnd || number % command.stride == start % command.stride) numbers.push_back(number);
    }
    return numbers;
  }

  static constexpr const char* kOld = "old";
};

TEST_P(ProgramMemory, EndsInOrderWithEveryFileOldOrWhole) {
  PutOld();
  const std::vector<std::string> names = folder.List();
  const auto old = Outputs();
  const RunResult good = CallFailing("none count");
  const auto whole = Outputs();
  const long count = TakeCount();
  ASSERT_GT(count, 100);
  for (const std::string how : {"once ", "forGood "}) {
    for (const long number : Numbers(count, how == "once ")) {
      SCOPED_TRACE(how + std::to_string(number));
      PutOld();
      const RunResult done = CallFailing(how + std::to_string(number));
      ASSERT_TRUE(done.status == good.status || done.status == 1) << done.status << done.err;
      ASSERT_EQ(folder.List(), names);
      ASSERT_TRUE(std::filesystem::is_empty(folder.Path("between")));
      // A command that finds something doubtful answers 1 as well.
      if (done.status == 0 || (good.status == 1 && done.out == good.out)) {
        ASSERT_EQ(done.out, good.out);
        ASSERT_EQ(Outputs(), whole);
      } else {
        ASSERT_EQ(Outputs(), old);
        ASSERT_NE(done.err, "");
      }
    }
  }
}

// With these strides each command fails eight to forty times in each of the two ways, besides the
// end.
INSTANTIATE_TEST_SUITE_P(
    Commands, ProgramMemory,
    testing::Values(
        CommandLine{
            "Render",
            "render land.mdf --level 2 -o o.gif --html o.html --report o.json --save-view v",
            {"o.gif", "o.html", "o.json", "v"},
            61},
        CommandLine{"RenderToStandardOutput",
                    "render land.mdf --level 2 -o - --report o.json",
                    {"o.json"},
                    127},
        CommandLine{"Locate", "locate land.mdf 200,200 --json", {}, 89},
        CommandLine{"InfoOfMap", "info land.map", {}, 17},
        CommandLine{"InfoOfData", "info land.mdf --json", {}, 17},
        CommandLine{"Compile", "compile land.map -o o.mpc", {"o.mpc"}, 17},
        CommandLine{"Decompile", "decompile land.mpc -o o.map", {"o.map"}, 17},
        CommandLine{"Convert", "convert land.mdf -o o.mdf", {"o.mdf"}, 17},
        CommandLine{"Tree", "tree land.map -o o.tree --base-url u", {"o.tree"}, 17},
        CommandLine{"Check", "check land.mdf", {}, 17},
        CommandLine{"Palettes", "palettes --json", {}, 61}),
    [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace vexel::test
