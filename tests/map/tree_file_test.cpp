#include "brindle/specfile.h"
#include "map/map_fixture.h"

namespace {

using vexel::test::Key;

class TreeFile : public vexel::test::MapTest {};

TEST_F(TreeFile, ListsGroupsAndLeavesInOrderWhateverIsOnShow) {
  CVELAMap map;
  map.SetName("M");
  map.InsertArea("A", Key({1}));
  map.InsertArea("B", Key({1, 2}));
  map.InsertArea("C = c", Key({3}));
  map.ZoomTo(map.GetChild(0));
  const auto listing = [&](const char* baseUrl) {
    EXPECT_NE(map.WriteTreeFile(Path("t"), baseUrl), 0);
    return dir.Read("t");
  };
  EXPECT_EQ(listing("http://x/?a=b&"),
            "BaseURL=http://x/?a=b&\nN=M\nU=\n[N]\nN=A\nU=A0=1\n[L]\nN=B\nU=A0=1&A1=2\n[EN]\n"
            "[L]\nN=C = c\nU=A0=3\n[EOF]\n");
  map.GetChild(0)->RemoveAllChildren();
  EXPECT_EQ(listing("u"), "BaseURL=u\nN=M\nU=\n[L]\nN=A\nU=A0=1\n[L]\nN=C = c\nU=A0=3\n[EOF]\n");
  map.RemoveAllChildren();
  EXPECT_EQ(listing(""), "BaseURL=\nN=M\nU=\n[EOF]\n");
  CSpecFile file(0);
  ASSERT_NE(file.Open(Path("own").GetString(), 1), 0);
  file.PutLine("first");
  map.WriteTreeFile(file, "");
  file.Close();
  EXPECT_EQ(dir.Read("own"), "first\n" + dir.Read("t"));
}

}  // namespace
