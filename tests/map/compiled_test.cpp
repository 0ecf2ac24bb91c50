#include <malloc.h>

#include <bit>

#include "map/map_fixture.h"
#include "platform/archive.h"
#include "platform/exceptions.h"

namespace {

using vexel::test::Describe;
using vexel::test::Key;
using vexel::test::ProbeMap;

constexpr std::string_view kTag = "Ortex 3.1\x1A";

// The bytes of a compiled map, put together by hand.
struct Bytes {
  std::string all;

  Bytes& Raw(std::string_view bytes) {
    all += bytes;
    return *this;
  }
  template <typename... Numbers>
  Bytes& Put(Numbers... numbers) {  // int32 and float32
    static_assert(((sizeof(numbers) == 4) && ...));
    for (const auto bits : {std::bit_cast<std::uint32_t>(numbers)...}) {
      for (unsigned shift = 0; shift < 32; shift += 8) all += static_cast<char>(bits >> shift);
    }
    return *this;
  }
  Bytes& Text(std::string_view text) { return Put8(text.size()).Raw(text); }
  Bytes& Put8(std::size_t byte) { return Raw(std::string(1, static_cast<char>(byte))); }
  // The head of a map in degrees with two of its levels named.
  Bytes& Head(std::string_view tag) {
    return Raw(tag).Put(1, 2).Text("M").Text("L").Raw(std::string(6, '\0'));
  }
  // A node up to its polygons; in the integer form the bound and the angle come as five numbers, in
  // the float form the bound comes as four.
  template <typename... Numbers>
  Bytes& Node(std::string_view name, int code, int polygons, Numbers... bound) {
    constexpr int kNone = CAreaStruct::kUnset;
    Text(name).Put(bound...).Put(polygons, code);
    return Put(kNone, kNone, kNone, kNone, kNone, kNone, kNone, polygons);
  }
  Bytes& IntegerHalf() {
    Node("M", CAreaStruct::kUnset, 0, 0, 0, 32000, -16000, 0.0F).Put(2);
    Node("A", 7, 2, 1, 2, 3, 4, 0.5F).Put(2, 10, -20, 30, -40, 0).Put(0, 1).Put(0);
    return Node("B", 0, 0, 5, 6, 7, 8, 0.0F).Put(0);
  }
  Bytes& FloatHalf(int polygons = 2, int points = 2, int children = 2) {
    Node("M", CAreaStruct::kUnset, 0, 9.0F, 1.0F, 2.0F, 8.0F).Put(children);
    Node("A", 7, polygons, 4.0F, 3.0F, 2.0F, 1.0F).Put(points);
    for (int i = 0; i < points; ++i) Put(1.5F, -2.5F);
    return Put(0).Put(0, 1).Put(0).Node("B", 0, 0, 0.0F, 0.0F, 0.0F, 0.0F).Put(0);
  }
};

std::string WholeFile(std::string_view tag = kTag) {
  return Bytes().Head(tag).IntegerHalf().FloatHalf().all;
}

class CompiledMap : public vexel::test::MapTest {
 protected:
  int LoadBytes(CVELAMap& map, std::string_view bytes, int loadFloats = 1) {
    return map.Build(Put("m.mpc", bytes), loadFloats, 0);
  }

  std::string Saved(CVELAMap& map) {
    EXPECT_EQ(map.SaveMpc(Path("s.mpc")), 1);
    return dir.Read("s.mpc");
  }

  // Loads what may be damaged and tells how it ended: "map", "refused", or what the
  // exception says. What stands then can be walked, marked, zoomed, saved and deleted.
  std::string Outcome(std::string_view bytes, int loadFloats = 1) {
    ProbeMap map;
    std::string outcome;
    try {
      outcome = LoadBytes(map, bytes, loadFloats) != 0 ? "map" : "refused";
    } catch (const CArchiveException& ended) {
      outcome = ended.cause == CArchiveException::endOfFile ? "early end" : ended.what();
    }
    EXPECT_EQ(TakeBoxes().starts_with("0 'MapFile' parameter points"), outcome == "refused");
    map.InitParents(nullptr);
    map.InitLevels(0);
    map.ZoomTo(map.GetNumChildren() > 0 ? map.GetChild(0) : &map);
    EXPECT_TRUE(vexel::test::IsSettled(map, map.GetDrawLevel()));
    map.ZoomOut();
    EXPECT_FALSE(Describe(map, true).empty());
    if (outcome == "map") map.SaveMap("/dev/null", nullptr);
    return outcome;
  }
};

TEST_F(CompiledMap, HasTheseBytesInBothDirections) {
  ProbeMap map;
  ASSERT_EQ(LoadBytes(map, WholeFile()), 1);
  EXPECT_EQ(Describe(map, true),
            "M() 0 0 in 0 0 32000 -16000\n"
            "A(7) 1 0.5 in 1 2 3 4 of 2 4 1 3 ring 10,-20 30,-40 1.5/-2.5 1.5/-2.5 hole\n"
            "B(0) 1 0 in 5 6 7 8 of 0 0 0 0\n");
  EXPECT_EQ(vexel::test::ToText(map.GetBoundRectF()), "2 9 8 1");
  EXPECT_EQ(map.longLat, 1);
  EXPECT_EQ(map.GetNumMapLevels(), 2);
  EXPECT_EQ(map.GetLevelName(1), "L");
  EXPECT_EQ(Saved(map), WholeFile());
}

TEST_F(CompiledMap, TheUsualLoadTakesTheIntegerHalfAndNeedsNoMore) {
  ProbeMap map;
  ASSERT_EQ(LoadBytes(map, Bytes().Head(kTag).IntegerHalf().all, 0), 1);
  EXPECT_EQ(map.GetChild(0)->GetPoly(0)->GetSizeF(), 0);
  EXPECT_TRUE(map.GetBoundRectF().IsRectNull());
  EXPECT_EQ(map.SaveMpc(Path("s.mpc")), 0);
  EXPECT_EQ(TakeBoxes(), "0 Can't save .MPC file; no floating point coordinates loaded.\n");
  EXPECT_EQ(dir.List(), std::vector<std::string>{"m.mpc"});
}

TEST_F(CompiledMap, AFileCutInTheHalfThatIsNotReadIsRemarkedOn) {
  const std::string whole = WholeFile();
  const std::size_t half = Bytes().Head(kTag).IntegerHalf().all.size();
  for (std::size_t size = half; size <= whole.size() + 1; ++size) {
    ProbeMap map;
    ASSERT_EQ(LoadBytes(map, (whole + "!").substr(0, size), 0), 1);
    const bool isCut = size > half && size < whole.size();
    ASSERT_EQ(host.TakeRemarks(), isCut ? "0 ends-in-second-half: ; ; \n" : "") << size;
  }
}

TEST_F(CompiledMap, PolygonsWithoutPointsTakeLittleMemoryAndAreTheirOwnOnceTouched) {
  constexpr int kMany = 100'000;
  Bytes bytes;
  bytes.Head(kTag).Node("M", 1, kMany, 0, 0, 0, 0, 0.0F);
  for (int i = 0; i < kMany; ++i) bytes.Put(0, i % 2);
  bytes.Put(0).Node("M", 1, kMany, 0.0F, 0.0F, 0.0F, 0.0F);
  for (int i = 0; i < kMany; ++i) bytes.Put(0, i % 3 == 0 ? 5 : i % 2);
  bytes.Put(0);
  const CVELAString path = Put("m.mpc", bytes.all);
  const auto used = [] { return ::mallinfo2().uordblks + ::mallinfo2().hblkhd; };
  const std::size_t before = used();
  ProbeMap map;
  ASSERT_EQ(map.Build(path, 0, 0), 1);
  EXPECT_LT(used() - before, 4 * bytes.all.size() / 2);
  const CMapOb& node = map;
  EXPECT_EQ(node.GetPoly(3)->IsHole(), 1);
  map.GetPoly(3)->AddPoint(1, 2);
  EXPECT_EQ(node.GetPoly(3)->GetSize(), 1);
  EXPECT_EQ(node.GetPoly(5)->GetSize(), 0);
  ProbeMap both;
  ASSERT_EQ(both.Build(path, 1, 0), 1);
  EXPECT_EQ(static_cast<const CMapOb&>(both).GetPoly(3)->IsHole(), 5);
  EXPECT_EQ(both.GetPoly(5)->IsHole(), 1);
  EXPECT_EQ(both.GetPoly(4)->IsHole(), 0);
}

TEST_F(CompiledMap, TagsMatchInAnyLetterCaseAndTheOldOneUnsetsZeroCodes) {
  ProbeMap map;
  ASSERT_EQ(LoadBytes(map, WholeFile("oRTEX 3.1\x1A")), 1);
  EXPECT_EQ(map.GetChild(1)->GetArea(), Key({0}));
  for (const char* tag : {"TAVO MPC1\x1A", "tavo mpc1\x1A"}) {
    ProbeMap old;
    ASSERT_EQ(LoadBytes(old, WholeFile(tag)), 1);
    EXPECT_EQ(old.GetChild(0)->GetArea(), Key({7}));
    EXPECT_EQ(old.GetChild(1)->GetArea(), CAreaStruct());
    EXPECT_TRUE(Saved(old).starts_with(kTag));
    const std::string before = Describe(old, true);
    for (const char* refused : {"Ortex 3.2\x1A", "Ortex 3.1 ", "Ortex 3.1"}) {
      EXPECT_EQ(LoadBytes(old, WholeFile(refused)), 0);
      EXPECT_EQ(old.compiledValid, 0);
      EXPECT_EQ(old.compiledOldFormat, 1);
      EXPECT_EQ(Describe(old, true), before);
    }
    ASSERT_EQ(LoadBytes(old, WholeFile()), 1);
    EXPECT_EQ(old.compiledOldFormat, 0);
  }
}

TEST_F(CompiledMap, CountsBelowZeroMeanNone) {
  Bytes bytes;
  bytes.Head(kTag).Node("M", 1, 1, 0, 0, 0, 0, 0.0F).Put(-3, 1, -1);
  bytes.Node("M", 1, 1, 0.0F, 0.0F, 0.0F, 0.0F).Put(-7, 1, -2);
  ProbeMap map;
  ASSERT_EQ(LoadBytes(map, bytes.all), 1);
  EXPECT_EQ(Describe(map, true), "M(1) 0 0 in 0 0 0 0 hole\n");
}

TEST_F(CompiledMap, AFreshNodeTakesTheFloatHalfAlone) {
  const CVELAString path = Put("half", Bytes().FloatHalf().all);
  CFile file;
  ASSERT_NE(file.Open(path.GetString(), CFile::modeRead), 0);
  CArchive ar(&file, CArchive::load);
  CMapOb node;
  node.Serialize(ar, 1, true);
  node.InitLevels(0);
  EXPECT_EQ(Describe(node, true),
            "M() 0 0 in 0 0 0 0\n"
            "A(7) 1 0 in 0 0 0 0 of 2 4 1 3 ring 1.5/-2.5 1.5/-2.5 hole\n"
            "B() 1 0 in 0 0 0 0 of 0 0 0 0\n");
}

TEST_F(CompiledMap, HalvesOfDifferentShapeAreRefused) {
  const char* damage = "the two halves of the compiled file do not fit each other";
  const auto half = [](int polygons, int points, int children) {
    const std::string more(200, '\0');
    return Bytes().Head(kTag).IntegerHalf().FloatHalf(polygons, points, children).Raw(more).all;
  };
  EXPECT_EQ(Outcome(half(2, 2, 2)), "map");
  EXPECT_EQ(Outcome(half(1, 2, 2)), damage);
  EXPECT_EQ(Outcome(half(3, 2, 2)), damage);
  EXPECT_EQ(Outcome(half(2, 1, 2)), damage);
  EXPECT_EQ(Outcome(half(2, 3, 2)), damage);
  EXPECT_EQ(Outcome(half(2, 2, 1)), damage);
  EXPECT_EQ(Outcome(half(2, 2, 3)), damage);
}

TEST_F(CompiledMap, NestingIsReadAsDeepAsTextIs) {
  const auto nested = [](int groups) {
    Bytes bytes;
    bytes.Head(kTag);
    for (int i = 0; i <= groups; ++i) bytes.Node("n", i, 0, 0, 0, 0, 0, 0.0F).Put(1);
    return bytes.Node("leaf", 0, 0, 0, 0, 0, 0, 0.0F).Put(0).all;
  };
  const char* damage = "the areas are nested too deeply";
  EXPECT_EQ(Outcome(nested(64), 0), "map");
  EXPECT_EQ(Outcome(nested(65), 0), damage);
  EXPECT_EQ(Outcome(nested(20000), 0), damage);
}

TEST_F(CompiledMap, CutAnywhereItEndsInTheDocumentedWay) {
  const std::string whole = WholeFile();
  const std::size_t integers = Bytes().Head(kTag).IntegerHalf().all.size();
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::string_view cut(whole.data(), length);
    const std::string_view short_ = length < kTag.size() ? "refused" : "early end";
    EXPECT_EQ(Outcome(cut), length == whole.size() ? "map" : short_) << length;
    EXPECT_EQ(Outcome(cut, 0), length >= integers ? "map" : short_) << length;
  }
}

TEST_F(CompiledMap, WithAnyByteChangedItEndsInTheDocumentedWay) {
  ProbeMap source;
  ASSERT_EQ(Load(source, vexel::test::kSmallMap), 1);
  for (const std::string& whole : {WholeFile(), Saved(source)}) {
    for (std::size_t at = 0; at < std::min<std::size_t>(whole.size(), 4096); ++at) {
      for (const char byte : {'\x00', '\x7F', '\xFF'}) {
        std::string damaged = whole;
        damaged[at] = byte;
        EXPECT_EQ(Outcome(damaged) == "refused", at < kTag.size() && damaged != whole) << at;
      }
    }
  }
}

TEST_F(CompiledMap, APolygonWithoutItsFloatsIsNotSaved) {
  ProbeMap map;
  ASSERT_EQ(LoadBytes(map, WholeFile()), 1);
  map.GetChild(0)->GetPoly(0)->RemovePointF(0);
  EXPECT_THROW(map.SaveMpc(Path("m.mpc")), CInvalidArgException);
  EXPECT_EQ(dir.Read("m.mpc"), WholeFile());
  EXPECT_EQ(dir.List(), std::vector<std::string>{"m.mpc"});
}

// A number that the change of any byte changes.
std::uint64_t Digest(std::string_view bytes) {
  std::uint64_t digest = 0xCBF29CE484222325U;
  for (const char byte : bytes) {
    digest = (digest ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
  }
  return digest;
}

// Points all over a frame, in map units.
std::string Grid(bool longLat, double left, double top, double width, double height) {
  constexpr int kSteps = 20;
  std::string lines = "M|MapName=M|LongLat=" + std::string(longLat ? "Yes" : "No") + "|U|Name=A|P";
  for (int i = 0; i <= kSteps * kSteps + 2 * kSteps; ++i) {
    const double across = i % (kSteps + 1) / double{kSteps};
    const double down = i / (kSteps + 1) / double{kSteps};
    lines +=
        '|' + std::to_string(left + width * across) + ' ' + std::to_string(top - height * down);
  }
  return vexel::test::Lines(lines);
}

// Compiled maps hold the integers that come out of floats and doubles: in these frames each
// rounding on the way moves some of them.
TEST_F(CompiledMap, KeepsEveryRoundingOfTheProjection) {
  const auto digest = [&](const std::string& text) {
    ProbeMap map;
    EXPECT_EQ(Load(map, text), 1);
    return Digest(Saved(map));
  };
  EXPECT_EQ(digest(Grid(true, 24.1, 61.2, 41.2, 15.8)), 0xFE041E27A2210F75U);
  EXPECT_EQ(digest(Grid(false, 82.6, -15.8, 11.0, 16.3)), 0x817DAF9234A98CBAU);
  ProbeMap sample;
  ASSERT_EQ(sample.Build(VEXEL_SAMPLES_DIR "/us-conus.map", 0, 0), 1);
  EXPECT_EQ(Digest(Saved(sample)), 0x7A938C7B05BD9374U);
}

}  // namespace
