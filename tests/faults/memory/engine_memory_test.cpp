// The library's operations while memory fails, at each allocation of theirs.

#include <functional>
#include <new>
#include <optional>
#include <thread>

#include "brindle/text.h"
#include "faults/memory/failing_memory.h"
#include "faults/model.h"

namespace vexel::test {
namespace {

// Says nothing, and so takes no memory.
class SilentHost : public CHost {
 public:
  SilentHost() : before_(SetCurrent(this)) {}
  SilentHost(const SilentHost&) = delete;
  SilentHost& operator=(const SilentHost&) = delete;
  ~SilentHost() override { SetCurrent(before_); }

  int ShowBox(const CString& /*text*/, unsigned /*flags*/) override {
    hasSpoken = true;
    return answerOk;
  }

  bool hasSpoken = false;

 private:
  CHost* before_;
};

struct Operation {
  const char* name;
  // Gives 0 when it has failed. What it writes is the file of that path.
  std::function<int(Model& model, const CVELAString& path)> run;
};

class EngineMemory : public MapTest, public testing::WithParamInterface<Operation> {
 protected:
  EngineMemory() {
    Put("m.map", kSmallMap);
    Put("d.mdf", Cells("[MapDataFile]|Version=Ortex 3.2|MapFile=m|MapLabel=~|AreaLevels=2|"
                       "Variables=1|Thousands=Space|Decimal=Comma|[Data]|"
                       "S;C;Area Name;Births|1;2;~;1 234,5"));
    Model model;
    EXPECT_EQ(model.map.Build(Path("m.map"), 1, 0), 1);
    EXPECT_EQ(model.map.SaveMpc(Path("c.mpc")), 1);
  }

  void Fill(Model& model) {
    ASSERT_EQ(model.data.Build(Path("d.mdf"), 1, 0), 1);
    model.map.SetAreaDataPointers(&model.data);
  }

  // Whether it was done whole; none where it went out of memory.
  std::optional<bool> Try(Failing failing, long number) {
    std::optional<bool> done;
    Model model;
    Fill(model);
    const CVELAString path = Path("f");
    // In a thread of its own, where everything is used for the first time.
    const auto run = [&] {
      const SilentHost silent;
      try {
        FailMemory(failing, number);
        done = GetParam().run(model, path) != 0 && !silent.hasSpoken;
      } catch (const std::bad_alloc&) {
      }
      allocations = CountOfAllocations();
      FailMemory(Failing::none, 0);
    };
    std::thread(run).join();
    return done;
  }

  long allocations = 0;
};

TEST_P(EngineMemory, FailsWithTheOldFileOrIsDoneWhole) {
  std::filesystem::current_path(dir.Path(""));
  Put("f", "old");
  ASSERT_EQ(Try(Failing::none, 0), true);
  const std::string whole = dir.Read("f");
  const std::vector<std::string> names = dir.List();
  const long count = allocations;
  ASSERT_GT(count, 0);
  for (const Failing failing : {Failing::once, Failing::forGood}) {
    for (long number = 1; number <= count; ++number) {
      Put("f", "old");
      const std::optional<bool> done = Try(failing, number);
      ASSERT_EQ(dir.List(), names) << number;
      ASSERT_EQ(dir.Read("f"), done == true ? whole : "old") << number;
    }
  }
}

// A number as text and back, and a cell that is longer than most.
int Convert(Model& /*model*/, const CVELAString& /*path*/) {
  std::string text = d2txt(1234.5, 2, '.', ',', 1);
  text.append(1000, '0');
  return txt2d(text.c_str(), '.', ',') == 1234.5 ? 1 : 0;
}

INSTANTIATE_TEST_SUITE_P(
    Operations, EngineMemory,
    testing::Values(
        Operation{"TextMap",
                  [](Model&, const CVELAString&) { return ProbeMap().Build("m.map", 1, 0); }},
        Operation{"CompiledMap",
                  [](Model&, const CVELAString&) { return ProbeMap().Build("c.mpc", 1, 0); }},
        Operation{"DataFile",
                  [](Model&, const CVELAString&) {
                    Model own;
                    return own.data.Build("d.mdf", 1, 0);
                  }},
        Operation{"SaveTextMap",
                  [](Model& model, const CVELAString& path) {
                    model.map.SaveMap(path, nullptr);
                    return 1;
                  }},
        Operation{"SaveCompiledMap",
                  [](Model& model, const CVELAString& path) {
                    model.map.floatsLoaded = 1;
                    return model.map.SaveMpc(path);
                  }},
        Operation{"SaveDataFile",
                  [](Model& model, const CVELAString& path) {
                    model.map.floatsLoaded = 0;  // so that the map is not compiled on the way
                    model.map.SaveMdf(path);
                    return 1;
                  }},
        Operation{"TreeFile",
                  [](Model& model, const CVELAString& path) {
                    return model.map.WriteTreeFile(path, "u");
                  }},
        Operation{"Page",
                  [](Model& model, const CVELAString& path) { return SavePage(model, path); }},
        Operation{"Numbers", Convert}),
    [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace vexel::test
