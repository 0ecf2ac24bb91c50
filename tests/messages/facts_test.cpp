// Files that cannot be read, and what is told beside the text of a message.

#include "faults/calls/failing_calls.h"
#include "faults/model.h"

namespace vexel::test {
namespace {

class MessageFacts : public MapTest {
 protected:
  int LoadMap(const char* lines) { return Load(model.map, Lines(lines)); }

  int LoadData(const std::string& lines) {
    Put("m.map", kSmallMap);
    return model.data.Build(Put("d.mdf", Cells("[MapDataFile]|Version=Ortex 3.2|" + lines)), 1, 0);
  }

  int LoadTable(const std::string& lines) {
    return LoadData("MapFile=m|MapLabel=~|AreaLevels=2|Variables=1|[Data]|S;C;Area Name;V|" +
                    lines);
  }

  // The facts of the last message, with "$" for the folder of the files.
  std::string Facts() {
    std::string facts = host.facts.back();
    const std::string folder = dir.Path("").substr(0, dir.Path("").size() - 1);
    return facts.replace(facts.find(folder), folder.size(), "$");
  }

  Model model;
};

TEST_F(MessageFacts, StandBesideTheText) {
  LoadMap("M|MapName=M|U|P|1 2|3,4");
  EXPECT_EQ(Facts(), "16000|$/m.map|||3,4|6");
  LoadMap("M|MapName=M|U|Name=A");
  EXPECT_EQ(Facts(), "16011|$/m.map||||0");
  LoadTable("7;X;Far;5");
  EXPECT_EQ(Facts(), "16027|$/d.mdf|7|Far||9");
  LoadTable("1;2;~;5;6");
  EXPECT_EQ(Facts(), "16028|$/d.mdf|1, 2|||9");
  LoadData("AreaLevels=8");
  EXPECT_EQ(Facts(), "16101|$/d.mdf|||8|3");
  model.data.Build(Path("no.mdf"), 1, 0);
  EXPECT_EQ(Facts(), "16031|$/no.mdf||||0");
  EXPECT_EQ(host.reasons.back(), "No such file or directory");
  EXPECT_EQ(host.boxes.back().flags, CHost::ok);
}

// Neither the heading that is not found nor the row that is too short is to blame then, and half a
// row is none.
TEST_F(MessageFacts, OfAFileThatCannotBeReadAreThatAtWhateverReading) {
  const CVELAString map = Put("f.map", "[Map]\nMapName=M\n");
  const CVELAString table = Put(
      "d.mdf", Cells("[MapDataFile]|MapLabel=~|AreaLevels=2|Variables=1|[Data]|S;C;Area Name;V") +
                   "1\t2\t~\t5");
  for (const char* order : {"read fails 1", "read fails 2"}) {
    FailCalls(order);
    EXPECT_EQ(model.map.Build(map, 0, 0), 0);
    EXPECT_EQ(host.boxes.size(), 1U);
    EXPECT_EQ(host.facts.back().substr(0, 5), "16104");
    EXPECT_EQ(host.boxes.back().flags, CHost::warning);
    EXPECT_EQ(host.reasons.back(), "Input/output error");
    FailCalls(order);
    EXPECT_EQ(model.data.Build(table, 0, 1), 0);
    FailCalls("");
    EXPECT_TRUE(model.data.GetError().View().starts_with("Can not read file to its end:  "));
    EXPECT_EQ(model.data.GetNumAreas(), 0);
    host.boxes.clear();
  }
}

}  // namespace
}  // namespace vexel::test
