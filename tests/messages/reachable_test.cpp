// Every message of the table, with what a user or a host has to do to be told it: its exact text,
// its flags, and that of a load the result.

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

#include "faults/model.h"
#include "messages/messages.h"

namespace {

int readsUntilFailure = -1;  // none fails below 0

}  // namespace

// Stands before that of the system: a disk that cannot be read on.
extern "C" ssize_t read(int file, void* bytes, std::size_t count) {
  if (readsUntilFailure == 0) {
    errno = EIO;
    return -1;
  }
  if (readsUntilFailure > 0) --readsUntilFailure;
  return ::syscall(SYS_read, file, bytes, count);
}

namespace vexel::test {
namespace {

struct Case;

class Messages : public MapTest, public testing::WithParamInterface<Case> {
 public:
  using MapTest::host;
  using MapTest::Load;
  using MapTest::Path;
  using MapTest::Put;

  int LoadMap(const char* lines) { return Load(model.map, Lines(lines)); }

  int LoadData(const std::string& lines) {
    Put("m.map", kSmallMap);
    return model.data.Build(Put("d.mdf", Cells("[MapDataFile]|Version=Ortex 3.2|" + lines)), 1, 0);
  }
  // What the exception of a load says.
  int LoadDamaged(std::string_view bytes, int loadFloats = 0) {
    try {
      return model.map.Build(Put("m.mpc", bytes), loadFloats, 0);
    } catch (const CArchiveException& error) {
      const bool early = error.cause == CArchiveException::endOfFile;
      host.ShowBox(early ? CString(MessageText(Message::compiledEndsEarly)) : CString(error.what()),
                   0);
      return 0;
    }
  }
  std::string Compiled() {
    Model other;
    EXPECT_EQ(Load(other.map, kSmallMap), 1);
    EXPECT_EQ(other.map.SaveMpc(Path("c.mpc")), 1);
    return dir.Read("c.mpc");
  }

  // Loads after so many readings that go well.
  template <typename Build>
  int LoadFailing(int readings, const Build& build) {
    readsUntilFailure = readings;
    const int result = build();
    readsUntilFailure = -1;
    return result;
  }

  int LoadTable(const std::string& lines) {
    return LoadData("MapFile=m|MapLabel=~|AreaLevels=2|Variables=1|[Data]|" + lines);
  }

  Model model;
};

struct Case {
  int number;
  int (*provoke)(Messages& test);
  std::string told;  // flags and text of each box; $ stands for the folder of the files
  int result = 0;
};

constexpr const char* kHeader = "S;C;Area Name;V|";

const Case kCases[] = {
    {16000, [](Messages& t) { return t.LoadMap("M|MapName=M|U|P|1 2|3,4"); },
     "0 Bad coordinates at line 6\n"},
    {16001, [](Messages& t) { return t.LoadMap("M|MapName=M|Colour=3|U|P|1 2"); },
     "0 Error at line 3\nColour\n", 1},
    {16002, [](Messages& t) { return t.LoadMap("M|MapName=M|U|AreaStructure=1.5|P|1 2"); },
     "0 Bad area structure at line 4\nAreaStructure\n"},
    {16003, [](Messages& t) { return t.model.map.Build(t.Path("no.mpc"), 0, 0); },
     "10 Error: could not open compiled map file $/no.mpc for reading\n"},
    {16004, [](Messages& t) { return t.model.map.Build(t.Put("t.mpc", "no map"), 0, 0); },
     "0 'MapFile' parameter points to invalid file:  ^/T.MPC\n"},
    {16005,
     [](Messages& t) {
       t.Load(t.model.map, kSmallMap, 1);
       return t.host.ShowBox(t.host.progressLog.at(1).c_str(), 0);
     },
     "0 text Loading map file ... please wait\n", 1},
    {16006, [](Messages& t) { return t.LoadMap("U|Name=A"); },
     "0 Didn't find [MAP] section heading\n"},
    {16007,
     [](Messages& t) {
       t.host.cancelAt = 1;
       return t.Load(t.model.map, kSmallMap, 1);
     },
     "40 Map file not loaded.\n"},
    {16008, [](Messages& t) { return t.LoadMap("M|U|Name=A|P|1 2"); },
     "0 No AreaLevels in map file\n"},
    {16009, [](Messages& t) { return t.LoadMap("M|MapName=M|L|[Odd]|U|P|1 2"); },
     "0 Invalid section heading at line 4:\n[Odd]\n", 1},
    {16010, [](Messages& t) { return t.LoadMap("M|MapName=M|L|Nme=X|U|P|1 2"); },
     "0 Unrecognized command at line 4:\nNme\n", 1},
    {16011, [](Messages& t) { return t.LoadMap("M|MapName=M|U|Name=A"); },
     "0 WARNING:  .MAP file has GeoGroup(s) and/or GeoUnit(s) with no polygons\n", 1},
    {16012, [](Messages& t) { return t.host.ShowBox(t.model.map.GetDataStr(&t.model.map), 0); },
     "0 <no data>\n", 1},
    {16013, [](Messages& t) { return t.model.data.Build(t.Put("d.mdf", "[Map]\n"), 1, 0); },
     "0 Not a valid Atlas Desk data file\n"},
    {16014, [](Messages& t) { return t.LoadData("Thousands=Dot|Decimal=Dot|[Data]"); },
     "0 Thousands parameter must not be the same as Decimal parameter\n"},
    {16016, [](Messages& t) { return t.LoadData("AreaLevels=1|[Data]"); },
     "0 Missing Variables statement\n"},
    {16020, [](Messages& t) { return t.LoadData("MapFile="); },
     "0 No Map File specified in Ortex Map Data File\n"},
    {16021, [](Messages& t) { return t.LoadData("MapFile=n"); },
     "0 Can't find Ortex Map File:  n\n"},
    {16022, [](Messages& t) { return t.LoadData("Thousands=Point|MapLabel=~"); },
     "0 Invalid Thousands parameter\n", 1},
    {16023, [](Messages& t) { return t.LoadData("Decimal=Point|MapLabel=~"); },
     "0 Invalid Decimal parameter\n", 1},
    {16024, [](Messages& t) { return t.LoadTable("S"); },
     "0 Not enough area level names at line 8\n"},
    {16025, [](Messages& t) { return t.LoadTable("S;C;Area Name"); },
     "0 Not enough variable names at line 8\n"},
    {16026, [](Messages& t) { return t.LoadTable(std::string(kHeader) + "1"); },
     "0 Area Level value missing at line 9\n"},
    {16027, [](Messages& t) { return t.LoadTable(std::string(kHeader) + "7;X;Far;5"); },
     "1 Area in .MDF not found in map file:\n\nName  =  Far\nAreaCodes  =  7 / -99999999\n", 1},
    {16028, [](Messages& t) { return t.LoadTable(std::string(kHeader) + "1;2;~;5;6"); },
     "0 Too many data values at line 9\n"},
    {16029, [](Messages& t) { return t.LoadTable(std::string(kHeader) + "1;2;~"); },
     "0 Not enough data values at line 9\n"},
    {16030, [](Messages& t) { return t.model.map.SaveMap(t.Path("no/m.map"), nullptr), 0; },
     "30 Can not open map file $/no/m.map\n"},
    {16031, [](Messages& t) { return t.model.data.Build(t.Path("no.mdf"), 1, 0); },
     "0 Can not open map data file $/no.mdf\n"},
    {16032, [](Messages& t) { return t.model.map.SaveMpc(t.Path("m.mpc")); },
     "0 Can't save .MPC file; no floating point coordinates loaded.\n"},
    {16033,
     [](Messages& t) {
       t.model.map.floatsLoaded = 1;
       return t.model.map.SaveMpc(t.Path("no/m.mpc"));
     },
     "30 Can not open compiled map file $/no/m.mpc\n"},
    {16101, [](Messages& t) { return t.LoadData("AreaLevels=8"); },
     "0 Invalid AreaLevels parameter at line 3\n"},
    {16102,
     [](Messages& t) {
       std::string lines = "M|MapName=M";
       for (int depth = 0; depth < 65; ++depth) lines += "|G";
       return t.LoadMap((lines + "|P|1 2").c_str());
     },
     "0 Groups nested too deeply at line 67\n"},
    {16103, [](Messages& t) { return t.model.map.SaveMap("/dev/full", nullptr), 0; },
     "30 Can not write file /dev/full\n"},
    {16104,
     [](Messages& t) {
       const CVELAString path = t.Put("m.map", kSmallMap);
       return t.LoadFailing(1, [&] { return t.model.map.Build(path, 0, 0); });
     },
     "30 Can not read file to its end:  $/m.map\n"},
    {16105, [](Messages& t) { return t.LoadDamaged(t.Compiled().substr(0, 200)); },
     "0 the compiled file ends early\n"},
    {16106,
     [](Messages& t) {
       // The root's only child has one that has one and so on.
       std::string bytes("Ortex 3.1\x1A", 10);
       bytes += std::string(16, '\0');
       for (int i = 0; i < 70; ++i) {
         bytes += std::string(1 + 20 + 4 + 32 + 4, '\0') + std::string("\x01\0\0\0", 4);
       }
       return t.LoadDamaged(bytes);
     },
     "0 the areas are nested too deeply\n"},
    {16107,
     [](Messages& t) {
       std::string bytes = t.Compiled();
       const std::size_t half = bytes.rfind(std::string("\x01M", 2));
       bytes[half + 2 + 16 + 4 + 32] = 5;  // polygons of the root
       return t.LoadDamaged(bytes, 1);
     },
     "0 the two halves of the compiled file do not fit each other\n"}};

TEST_P(Messages, IsToldWithItsTextAndFlags) {
  const Case& expected = GetParam();
  EXPECT_EQ(expected.provoke(*this), expected.result);
  std::string told = TakeBoxes();
  const std::string folder = dir.Path("").substr(0, dir.Path("").size() - 1);
  for (const auto& [mark, path] :
       {std::pair{"$", folder},
        std::pair{"^", std::string(CString(folder.c_str()).MakeUpper().View())}}) {
    if (const std::size_t at = told.find(path); at != std::string::npos) {
      told.replace(at, path.size(), mark);
    }
  }
  EXPECT_EQ(told, expected.told);
}

INSTANTIATE_TEST_SUITE_P(Table, Messages, testing::ValuesIn(kCases),
                         [](const auto& tested) { return std::to_string(tested.param.number); });

struct Facts {
  const char* name;
  int (*provoke)(Messages& test);
  std::string facts;  // of the last message: number, file, area, name, text found and line
};

class MessageFacts : public Messages {};

TEST_F(MessageFacts, StandBesideTheText) {
  const Facts kFacts[] = {
      {"coordinates", kCases[0].provoke, "16000|$/m.map|||3,4|6"},
      {"keyword", kCases[1].provoke, "16001|$/m.map|||Colour|3"},
      {"polygons", [](Messages& t) { return t.LoadMap("M|MapName=M|U|Name=A"); },
       "16011|$/m.map||||0"},
      {"area", [](Messages& t) { return t.LoadTable(std::string(kHeader) + "7;X;Far;5"); },
       "16027|$/d.mdf|7|Far||9"},
      {"row", [](Messages& t) { return t.LoadTable(std::string(kHeader) + "1;2;~;5;6"); },
       "16028|$/d.mdf|1, 2|||9"},
      {"count", [](Messages& t) { return t.LoadData("AreaLevels=8"); }, "16101|$/d.mdf|||8|3"},
      {"missing", [](Messages& t) { return t.model.data.Build(t.Path("no.mdf"), 1, 0); },
       "16031|$/no.mdf||||0"}};
  for (const Facts& expected : kFacts) {
    expected.provoke(*this);
    std::string facts = host.facts.back();
    const std::string folder = dir.Path("").substr(0, dir.Path("").size() - 1);
    facts.replace(facts.find(folder), folder.size(), "$");
    EXPECT_EQ(facts, expected.facts) << expected.name;
  }
  EXPECT_EQ(host.reasons.back(), "No such file or directory");
}

// Neither the heading that is not found nor the row that is too short is to blame then.
TEST_F(MessageFacts, OfAFileThatCannotBeReadAreThatAtWhateverReading) {
  const std::string rows = Cells("[MapDataFile]|MapLabel=~|AreaLevels=2|Variables=1|[Data]|") +
                           Cells(kHeader) + Cells("1;2;~;5");
  const CVELAString table = Put("d.mdf", rows);
  for (const int readings : {0, 1}) {
    EXPECT_EQ(LoadFailing(readings, [&] { return model.map.Build(Put("f.map", "M"), 0, 0); }), 0);
    EXPECT_EQ(host.boxes.size(), 1U);
    EXPECT_EQ(host.facts.back().substr(0, 5), "16104");
    EXPECT_EQ(host.reasons.back(), "Input/output error");
    EXPECT_EQ(LoadFailing(readings, [&] { return model.data.Build(table, 0, 1); }), 0);
    EXPECT_TRUE(model.data.GetError().View().starts_with("Can not read file to its end:  "));
    host.boxes.clear();
  }
}

// 16018 is for hosts that ask before they load a file of another version.
TEST(MessageTable, HasNoNumberWithoutACase) {
  for (int number = 16000; number < 16200; ++number) {
    const bool isThere = MessageText(static_cast<Message>(number)) != "Unknown message %d";
    const bool isTold = std::any_of(std::begin(kCases), std::end(kCases),
                                    [=](const Case& c) { return c.number == number; });
    EXPECT_EQ(isThere && number != 16018, isTold) << number;
  }
}

}  // namespace
}  // namespace vexel::test
