// Disks that fill up, at every byte of everything that is written.

#include <sys/resource.h>

#include <csignal>

#include "faults/calls/failing_calls.h"
#include "faults/model.h"

namespace vexel::test {
namespace {

// No file can grow beyond so many bytes while it lives.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit full{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &full);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit before_{};
  void (*handler_)(int);
};

constexpr int kNone = 7;  // stands for the result of what gives none

struct Writer {
  const char* name;
  int (*write)(Model& model, const CVELAString& path);
  int failed;
  const char* unopened;  // what is told of a file that cannot be opened, and of one not written
  const char* told = "30 Can not write file ";
};

int WriteData(Model& model, const CVELAString& path) {
  model.map.floatsLoaded = 0;  // so that the map is not compiled on the way
  model.map.SaveMdf(path);
  return kNone;
}

int WriteAreaLines(Model& model, const CVELAString& path) {
  CStdioFile lines;
  if (lines.Open(path.GetString(), CFile::modeCreate | CFile::modeWrite) == 0) return 0;
  SavePage(model, "/dev/null", &lines);
  return lines.Close();
}

constexpr Writer kWriters[] = {
    {"TextMap",
     [](Model& model, const CVELAString& path) { return model.map.SaveMap(path, nullptr), kNone; },
     kNone, "30 Can not open map file "},
    {"CompiledMap", [](Model& model, const CVELAString& path) { return model.map.SaveMpc(path); },
     0, "30 Can not open compiled map file "},
    {"DataFile", WriteData, kNone, "30 Can not open map data file "},
    {"TreeFile",
     [](Model& model, const CVELAString& path) { return model.map.WriteTreeFile(path, "u"); }, 0,
     "", ""},
    {"Page", [](Model& model, const CVELAString& path) { return SavePage(model, path); }, 0,
     "30 Can not write file "},
    {"AreaLines", WriteAreaLines, 0, "", ""}};

class Saving : public MapTest, public testing::WithParamInterface<Writer> {
 protected:
  Saving() {
    Put("m.map", kSmallMap);
    Put("d.mdf", Cells("[MapDataFile]|Version=Ortex 3.2|MapFile=m|MapLabel=~|AreaLevels=2|"
                       "Variables=1|[Data]|S;C;Area Name;Births|1;2;~;5"));
    EXPECT_EQ(model.data.Build(Path("d.mdf"), 1, 0), 1);
    model.map.SetAreaDataPointers(&model.data);
  }

  std::string Told(const char* text, const CVELAString& path) {
    return *text == 0 ? "" : text + std::string(path.View()) + '\n';
  }

  const std::vector<std::string> before{"d.mdf", "m.map"};
  Model model;
};

TEST_P(Saving, LeavesTheOldFileOrNoneUntilTheLastByteIsTaken) {
  const Writer& writer = GetParam();
  const CVELAString path = Path("f");
  const int done = writer.failed == 0 ? 1 : kNone;
  ASSERT_EQ(writer.write(model, path), done);
  const std::string whole = dir.Read("f");
  ASSERT_GT(whole.size(), 20U);
  const std::string old = "old " + whole;
  for (rlim_t limit = 0; limit <= whole.size(); ++limit) {
    for (const bool exists : {false, true}) {
      std::remove(path.GetString());
      if (exists) Put("f", old);
      const bool fits = limit == whole.size();
      int result = 0;
      {
        const FullDisk disk(limit);
        result = writer.write(model, path);
      }
      ASSERT_EQ(result, fits ? done : writer.failed) << limit;
      ASSERT_EQ(TakeBoxes(), fits ? "" : Told(writer.told, path)) << limit;
      ASSERT_EQ(dir.Read("f"), fits ? whole : exists ? old : "") << limit;
      ASSERT_EQ(dir.List().size(), before.size() + (fits || exists ? 1U : 0U)) << limit;
    }
  }
}

TEST_P(Saving, TellsOfADeviceThatTakesNothingAndOfAFolderThatIsNotThere) {
  EXPECT_EQ(GetParam().write(model, "/dev/full"), GetParam().failed);
  EXPECT_EQ(TakeBoxes(), Told(GetParam().told, "/dev/full"));
  EXPECT_EQ(GetParam().write(model, Path("no/f")), GetParam().failed);
  EXPECT_EQ(TakeBoxes(), Told(GetParam().unopened, Path("no/f")));
  EXPECT_EQ(dir.List(), before);
}

TEST_P(Saving, LeavesTheOldFileWhenTheSystemRefusesTheLastSteps) {
  const CVELAString path = Put("f", "old");
  const std::vector<std::string> names = dir.List();
  for (const char* order : {"write fails 1", "close fails 1", "rename fails 1"}) {
    FailCalls(order);
    EXPECT_EQ(GetParam().write(model, path), GetParam().failed) << order;
    FailCalls("");
    EXPECT_EQ(TakeBoxes(), Told(GetParam().told, path)) << order;
    EXPECT_EQ(dir.Read("f"), "old") << order;
    EXPECT_EQ(dir.List(), names) << order;
  }
}

INSTANTIATE_TEST_SUITE_P(Writers, Saving, testing::ValuesIn(kWriters),
                         [](const auto& tested) { return tested.param.name; });

// A data file brings its map along, which is written first.
TEST_F(Saving, ADataFileIsNotWrittenWhenItsMapIsNot) {
  const auto saveOn = [&](rlim_t bytes) {
    const FullDisk disk(bytes);
    model.map.SaveMdf(Path("d.mdf"));
  };
  const std::string old = dir.Read("d.mdf");
  model.data.SetMapFile(Path("m"));
  model.data.SetNoValue(std::string(3000, 'n').c_str());
  ASSERT_EQ(model.map.SaveMpc(Path("new")), 1);
  Put("m.mpc", "old");
  saveOn(40);
  EXPECT_EQ(TakeBoxes(), Told("30 Can not write file ", Path("m.mpc")));
  EXPECT_EQ(dir.Read("m.mpc"), "old");
  EXPECT_EQ(dir.Read("d.mdf"), old);
  saveOn(2000);
  EXPECT_EQ(TakeBoxes(), Told("30 Can not write file ", Path("d.mdf")));
  EXPECT_EQ(dir.Read("m.mpc"), dir.Read("new"));
  EXPECT_EQ(dir.Read("d.mdf"), old);
  EXPECT_EQ(dir.List(), (std::vector<std::string>{"d.mdf", "m.map", "m.mpc", "new"}));
}

}  // namespace
}  // namespace vexel::test
