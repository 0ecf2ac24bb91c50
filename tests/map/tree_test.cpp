#include "map/map_fixture.h"
#include "platform/exceptions.h"

namespace {

using vexel::test::Key;
using vexel::test::Shape;

class CountedNode : public CMapOb {
 public:
  explicit CountedNode(int& alive) : alive_(alive) { ++alive_; }
  ~CountedNode() override { --alive_; }

 private:
  int& alive_;
};

// Inserting behind the end leaves entries that nobody may ever fill.
TEST(Node, OwnsItsSubtree) {
  int alive = 0;
  {
    CMapOb root("R", {});
    root.AddChild(new CountedNode(alive));
    root.GetChild(0)->AddChild(new CountedNode(alive));
    EXPECT_EQ(root.GetChild(0)->GetParent(), nullptr);  // until it is told
    root.InsertChildAt(new CountedNode(alive), 3);
    EXPECT_EQ(root.GetChild(2), nullptr);
    EXPECT_THROW(root.InsertChildAt(nullptr, -1), CInvalidArgException);
    EXPECT_EQ(alive, 3);
    root.RemoveAllChildren();
    EXPECT_EQ(alive, 0);
    root.InsertChildAt(new CountedNode(alive), 2);
  }
  EXPECT_EQ(alive, 0);
}

TEST(InsertArea, MakesMissingAncestorsNamedAfterTheirKeys) {
  CMapOb root("R", {});
  const CMapOb* node = root.InsertArea("leaf", Key({3, 7, 2}));
  EXPECT_EQ(Shape(root), "R{3{3, 7{leaf}}}");
  EXPECT_TRUE(vexel::test::IsSettled(root, -1));
  EXPECT_EQ(node->GetParent()->GetArea(), Key({3, 7}));
  EXPECT_EQ(root.InsertArea("deep", Key({1, 2, 3, 4, 5, 6, 7, 8}))->GetLevel(), 8);
  CMapOb stranger("S", Key({4, 4}));
  stranger.InsertArea("guest", Key({1, 1}));
  EXPECT_EQ(Shape(stranger), "S{1{guest}}");  // a root may have any key
  EXPECT_THROW(stranger.InsertArea("lost", Key({2})), CInvalidArgException);
  EXPECT_THROW(stranger.GetChild(0)->InsertArea("lost", Key({2, 1, 1})), CInvalidArgException);
  EXPECT_EQ(Shape(stranger), "S{1{guest}}");
}

TEST(InsertArea, KeepsTheOrderOfKeysAndPutsASecondOfOneKeyBehindTheFirst) {
  CMapOb root("R", {});
  for (const char* code : {"5", "3", "4", "-1"}) root.InsertArea(code, Key({std::stoi(code)}));
  root.InsertArea("3b", Key({3}));
  root.InsertArea("3-1", Key({3, 1}));
  root.InsertArea("blank", {});
  EXPECT_EQ(Shape(root), "R{blank -1 3{3-1} 3b 4 5}");
  CMapOb unordered("R", {});
  for (const int code : {2, 9, 1}) unordered.AddChild(new CMapOb("", Key({code})));
  unordered.InsertArea("5", Key({5}));
  EXPECT_EQ(Shape(unordered), "R{ 5  }");
}

TEST(Lookup, GetAreaLooksOnTheKeysOwnLevelAndFindAnywhere) {
  CMapOb root("R", {});
  auto* wrongLevel = new CMapOb("early", Key({1, 2}));
  auto* right = new CMapOb("right", Key({1, 2}));
  root.AddChild(wrongLevel);
  root.AddChild(new CMapOb("1", Key({1})));
  root.GetChild(1)->AddChild(new CMapOb("other", Key({1, 1})));
  root.GetChild(1)->AddChild(right);
  root.InitLevels(0);
  EXPECT_EQ(root.GetArea(Key({1, 2})), right);
  EXPECT_EQ(root.GetArea(Key({7, 7})), nullptr);
  EXPECT_EQ(root.GetArea(CAreaStruct()), &root);
  CMapOb* found = right;
  EXPECT_EQ(root.Find(Key({7, 7}), found), 0);
  EXPECT_EQ(found, right);
  EXPECT_EQ(root.Find(Key({1, 2}), found), 1);
  EXPECT_EQ(found, wrongLevel);
  EXPECT_EQ(root.Find(CAreaStruct(), found), 1);
  EXPECT_EQ(found, &root);
  int count = 10;
  root.Count(count);
  EXPECT_EQ(count, 15);
}

TEST(Map, StartsAtItselfAndHoldsEightLevelNames) {
  CVELAMap map;
  EXPECT_EQ(map.GetDrawRoot(), &map);
  EXPECT_EQ(map.GetDrawLevel(), 1);
  for (int i = 0; i < 8; ++i) map.AddLevelName(std::to_string(i).c_str());
  EXPECT_EQ(map.GetLevelName(7), "7");
  EXPECT_THROW(map.AddLevelName("9"), CInvalidArgException);
  EXPECT_THROW(map.GetLevelName(8), CInvalidArgException);
}

}  // namespace
