#include <limits>

#include "render/render_fixture.h"
#include "support/files.h"

namespace vexel::test {
namespace {

CAreaStruct Key(std::initializer_list<std::int32_t> codes, std::int32_t rest) {
  CAreaStruct key;
  key.codes.fill(rest);
  std::copy(codes.begin(), codes.end(), key.codes.begin());
  return key;
}

class ImageMapTest : public testing::Test {
 protected:
  ImageMapTest() {
    EXPECT_TRUE(file.Open(dir.Path("areas.html").c_str(), CFile::modeCreate | CFile::modeWrite));
    page.SetHtmlFile(&file);
  }

  std::string Written() {
    file.Close();
    return dir.Read("areas.html");
  }

  void SetPoints(const std::vector<CPoint>& points) {
    std::copy(points.begin(), points.end(), page.points.begin());
    page.numPoints = static_cast<int>(points.size());
  }

  TempDir dir;
  CStdioFile file;
  ProbePage page;
};

TEST_F(ImageMapTest, AnElementHoldsPixelsLinkAndCodes) {
  SetPoints({{10, 20}, {30, 40}, {50, 60}});
  page.PolygonToHtml(Key({12, 3}, 0), "U");
  SetPoints({{-1, std::numeric_limits<int>::min()}});
  page.PolygonToHtml(Key({12, 0, -3}, CAreaStruct::kUnset), "x?y=<&\"");
  page.SetHtmlFile(nullptr);
  page.PolygonToHtml(Key({1}, 0), "not written");
  EXPECT_EQ(Written(),
            "<area shape=\"polygon\" coords=\"10,20,30,40,50,60\"  href=\"U&A0=12&A1=3')\">\r\n"
            "<area shape=\"polygon\" coords=\"-1,-2147483648\"  href=\"x?y=<&\"&A0=12&A2=-3"
            "&A3=-99999999&A4=-99999999&A5=-99999999&A6=-99999999&A7=-99999999')\">\r\n");
}

TEST_F(ImageMapTest, ALineEndsBehindTheCommaBeforeEveryFiftiethVertex) {
  for (const int count : {49, 50, 100}) {
    SetPoints(
        std::vector<CPoint>(static_cast<std::size_t>(count), CPoint{-1234567890, -1234567890}));
    page.PolygonToHtml(Key({}, 0), "U");
  }
  const std::string vertex = "-1234567890,-1234567890";
  const auto vertices = [&](int count) {
    std::string text = vertex;
    for (int i = 1; i < count; ++i) text += ',' + vertex;
    return text;
  };
  const std::string start = "<area shape=\"polygon\" coords=\"" + vertices(49);
  const std::string end = "\"  href=\"U')\">\r\n";
  EXPECT_EQ(Written(), start + end + start + ",\r\n" + vertices(1) + end + start + ",\r\n" +
                           vertices(50) + ",\r\n" + vertices(1) + end);
}

}  // namespace
}  // namespace vexel::test
