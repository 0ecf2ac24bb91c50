#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "map/map.h"
#include "messages/messages.h"
#include "platform/host.h"
#include "platform/number.h"
#include "platform/path.h"
#include "platform/region.h"
#include "support/recording_host.h"

namespace vexel::test {
namespace {

TEST(Objects, AreMadeByNameAndKnowTheirClasses) {
  for (const char* name :
       {"CAreaData", "CVELAData", "CPolygon", "CMapOb", "CVELAMap", "CRectF", "CGif", "CMapGif"}) {
    const std::unique_ptr<CObject> object(CRuntimeClass::CreateObject(name));
    ASSERT_NE(object, nullptr) << name;
    EXPECT_STREQ(object->GetRuntimeClass()->className, name);
    EXPECT_TRUE(object->GetRuntimeClass()->IsDerivedFrom(CObject::GetThisClass()));
  }
  EXPECT_TRUE(CVELAMap::GetThisClass()->IsDerivedFrom(CMapOb::GetThisClass()));
  EXPECT_FALSE(CMapOb::GetThisClass()->IsDerivedFrom(CVELAMap::GetThisClass()));
  EXPECT_EQ(CRuntimeClass::CreateObject("CNothing"), nullptr);
}

TEST(Host, IsEachThreadsOwn) {
  RecordingHost host;
  AfxMessageBox("here", 0x30, 0);
  std::thread([] {
    RecordingHost other;
    AfxMessageBox("there", 0, 0);
    EXPECT_EQ(other.boxes.size(), 1U);
  }).join();
  ASSERT_EQ(host.boxes.size(), 1U);
  EXPECT_EQ(host.boxes[0].text, "here");
  EXPECT_EQ(host.boxes[0].flags, 0x30U);
}

TEST(Messages, FillInOrderAndKnowEveryNumber) {
  EXPECT_EQ(FormatMessage(Message::sameSeparators, "50%d", "%s"),
            "50%d parameter must not be the same as %s parameter");
  EXPECT_EQ(FormatMessage(Message::badCoordinates, 12), "Bad coordinates at line 12");
  for (int number = 16000; number < 16110; ++number) {
    const bool known = number <= 16033 ? number != 16015 && number != 16017 && number != 16019
                                       : number >= 16101 && number <= 16104;
    const auto text = MessageText(static_cast<Message>(number));
    EXPECT_EQ(text != "Unknown message %d", known) << number << ' ' << text;
  }
}

TEST(Numbers, SaturateInsteadOfOverflowing) {
  constexpr int kMost = std::numeric_limits<int>::max();
  constexpr int kLeast = std::numeric_limits<int>::min();
  EXPECT_EQ(TruncateToInt(-1.999), -1);
  EXPECT_EQ(TruncateToInt(2147483647.5), kMost);
  EXPECT_EQ(TruncateToInt(-1e300), kLeast);
  EXPECT_EQ(TruncateToInt(std::numeric_limits<double>::quiet_NaN()), 0);
  EXPECT_EQ(NarrowToFloat(1e300), std::numeric_limits<float>::max());
  EXPECT_EQ(LowInt32(0x1'0000'0005), 5);
  EXPECT_EQ(LowInt32(0xFFFFFFFF), -1);
}

TEST(Paths, SplitAtTheirLastSeparatorAndDot) {
  struct Case {
    std::string_view path, folder, name, extension;
  };
  for (const Case& c : {Case{"/a.b/c", "/a.b/", "c", ""}, Case{"d.tar.gz", "", "d.tar", ".gz"},
                        Case{"C:x\\y.mdf", "C:x\\", "y", ".mdf"}, Case{"C:y", "C:", "y", ""},
                        Case{"/d/run:10.mdf", "/d/", "run:10", ".mdf"}, Case{"", "", "", ""}}) {
    const PathParts parts = SplitPath(c.path);
    EXPECT_EQ(parts.folder, c.folder);
    EXPECT_EQ(parts.name, c.name);
    EXPECT_EQ(parts.extension, c.extension);
  }
}

bool Inside(const std::vector<CPoint>& ring, CPoint point) {
  PolygonPointTest test(point);
  for (const CPoint& vertex : ring) test.AddVertex(vertex);
  return test.Contains();
}

TEST(Region, OwnsItsSmallestEdgesAndWindsAroundItsPoints) {
  const std::vector<CPoint> square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
  for (const auto& [point, inside] : std::vector<std::pair<CPoint, bool>>{{{0, 0}, true},
                                                                          {{9, 9}, true},
                                                                          {{10, 5}, false},
                                                                          {{5, 10}, false},
                                                                          {{-1, 5}, false},
                                                                          {{0, 9}, true},
                                                                          {{9, 0}, true},
                                                                          {{10, 10}, false}}) {
    EXPECT_EQ(Inside(square, point), inside) << point.x << ',' << point.y;
  }
  // Twice around: the even-odd rule would leave the middle out.
  const std::vector<CPoint> twice{{0, 0}, {9, 0}, {9, 9}, {2, 9}, {2, 2}, {7, 2}, {7, 7}, {0, 7}};
  EXPECT_TRUE(Inside(twice, {4, 5}));
  constexpr int kFar = std::numeric_limits<int>::max();
  EXPECT_TRUE(Inside({{-kFar, -kFar}, {kFar, -kFar}, {kFar, kFar}, {-kFar, kFar}}, {kFar - 1, 0}));
  EXPECT_FALSE(Inside({}, {0, 0}));
  EXPECT_FALSE(Inside({{1, 1}}, {1, 1}));
}

// Neighbours share no point: of triangles that tile a square, each point lies in exactly one.
TEST(Region, NeighboursShareNoPoint) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    const CPoint middle{1 + static_cast<int>(random() % 19), 1 + static_cast<int>(random() % 19)};
    const std::vector<CPoint> corners{{0, 0}, {20, 0}, {20, 20}, {0, 20}};
    for (int x = -1; x <= 20; ++x) {
      for (int y = -1; y <= 20; ++y) {
        int owners = 0;
        for (std::size_t i = 0; i < 4; ++i) {
          owners += Inside({corners[i], corners[(i + 1) % 4], middle}, {x, y}) ? 1 : 0;
        }
        EXPECT_EQ(owners, x >= 0 && x < 20 && y >= 0 && y < 20 ? 1 : 0) << x << ',' << y;
      }
    }
  }
}

}  // namespace
}  // namespace vexel::test
