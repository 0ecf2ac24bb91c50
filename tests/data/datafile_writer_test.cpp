#include "brindle/specfile.h"
#include "data/data_fixture.h"

namespace vexel::test {
namespace {

class WriterTest : public DataTest {
 protected:
  std::string Written() {
    CSpecFile file(0);
    EXPECT_NE(file.Open(Path("out.mdf").GetString(), 1), 0);
    map.SaveMdfSpec(file);
    EXPECT_NE(file.Close(), 0);
    return dir.Read("out.mdf");
  }
};

const std::string kRows = "12;X;North;97512;85.25|12;3;~;310;N/A|7;X;South;-4;0.5";

TEST_F(WriterTest, WritesWhatItWouldReadAgain) {
  ASSERT_EQ(Load(kHead + "LinkTo=x|" + kHeader + kRows), 1);
  EXPECT_EQ(Written(), Table("[MapDataFile]|Version=Ortex 3.2|MapFile=|AreaLevels=2|Variables=2|"
                             "Thousands=Comma|Decimal=Dot|NoValue=N/A|MapLabel=Land||[Data]|"
                             "State;County;Area Name;Births;Deaths|12;-99999999;North;97,512;85.25|"
                             "12;3;Upper;310;N/A|7;-99999999;~;-4;0.50"));
}

// Data file -> memory -> data file -> memory, under every pair of separators a machine may have.
TEST_F(WriterTest, RowsSurviveTheRoundUnderAnySeparators) {
  ASSERT_EQ(Load(kHead + kHeader + kRows), 1);
  for (const char* thousand : {",", ".", " ", "'", ""}) {
    for (const char* decimal : {".", ",", "'", ""}) {
      host.profile = {{"sThousand", thousand}, {"sDecimal", decimal}};
      const std::string text = Written();
      ProbeData again;
      again.map = &map;
      ASSERT_EQ(again.Build(Path("out.mdf"), 0, 1), 1) << text;
      ASSERT_EQ(again.GetNumAreas(), data.GetNumAreas());
      for (int i = 0; i < data.GetNumAreas(); ++i)
        EXPECT_NE(again.GetAreaData(i) == data.GetAreaData(i), 0) << i << '\n' << text;
    }
  }
}

TEST_F(WriterTest, TextsThatWouldBreakTheTableAreMended) {
  ASSERT_EQ(Load(kHead + kHeader + "12;3;~;1;2|12;X;~;3;N/A"), 1);
  map.GetChild(0)->SetName("");
  map.GetChild(0)->GetChild(0)->SetName("a\tb\r\nc");
  data.SetVarName(0, "");
  data.SetNoValue("");
  const std::string text = Written();
  for (const char* part : {"\t3\ta b  c\t1\t2\n", "\t~\t3\tN/A\n", "NoValue=N/A\n", "\tColumn 1\t"})
    EXPECT_NE(text.find(part), std::string::npos) << text;
}

TEST_F(WriterTest, SavingCompilesTheMapThatHasItsFloats) {
  ASSERT_EQ(Load(kHead + kHeader + kRows), 1);
  TakeBoxes();
  data.SetMapFile(Path("m.old"));
  map.SaveMdf(Path("out.mdf"));
  EXPECT_EQ(dir.List(), (std::vector<std::string>{"d.mdf", "m.map", "m.mpc", "out.mdf"}));
  EXPECT_NE(dir.Read("out.mdf").find("MapFile=m\n"), std::string::npos);
  CVELAMap compiled;
  EXPECT_EQ(compiled.Build(Path("m.mpc"), 0, 0), 1);
  data.SetMapFile(Path("none/m"));
  map.SaveMdf(Path("new.mdf"));
  EXPECT_EQ(TakeBoxes(), "30 Can not open compiled map file " + dir.Path("none/m.mpc") + '\n');
  EXPECT_EQ(dir.Read("new.mdf"), "");
}

}  // namespace
}  // namespace vexel::test
