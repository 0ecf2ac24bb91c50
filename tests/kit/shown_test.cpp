// One view that shows one request after the other, and what is found on its pages.

#include <gd.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

#include "kit/report/csv.h"
#include "kit/report/report.h"
#include "kit/request/arguments.h"
#include "kit/request/error.h"
#include "kit/request/query.h"
#include "kit/view/area_finder.h"
#include "kit/view/page.h"
#include "kit/view/view.h"
#include "support/files.h"
#include "support/run.h"

namespace vexel::test {
namespace {

const std::string kCounties = VEXEL_SAMPLES_DIR "/us-counties.mdf";
const std::string kTurning = VEXEL_SAMPLES_DIR "/us-conus.mdf";  // when zoomed to a state

// Requests that users could make of the counties, some of them wrong.
class Requests {
 public:
  Request Next() {
    Request request;
    request.data = kCounties;
    std::string query = "size=" + std::to_string(Below(500) + 60) + "x" +
                        std::to_string(Below(400) + 60) + "&level=" + std::to_string(Below(3) + 1) +
                        "&palette=" + One({"blue", "red", "RdBu", "viridis"}) +
                        One({"", "", "&intervals=natural", "&intervals=widths", "&bounds=3,7,9",
                             "&midpoint=5&intervals=widths"}) +
                        One({"", "&groups=3", "&groups=7", "&groups=1"}) +
                        One({"", "&separators=.,", "&reverse=1", "&open-ends=1", "&legend-counts=1",
                             "&zero-apart=1", "&group-names=a,b"});
    if (Below(2) == 0) query += "&zoom=" + std::to_string(Below(57));
    if (Below(6) == 0) query += "&outline=" + std::to_string(Below(57));
    if (Below(6) == 0) query += "&box=" + std::to_string(Below(57));
    if (Below(2) == 0) {
      query += "&var=" + std::to_string(Below(6) + 1);
    } else {
      query += "&var=2&var2=3&calc=" + One({"percent", "ratio", "difference", "change"});
    }
    std::vector<std::string> problems;
    ReadQuery(request, query, &problems);
    return request;
  }

  int Below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }

 private:
  std::string One(std::initializer_list<const char*> texts) {
    return texts.begin()[Below(static_cast<int>(texts.size()))];
  }

  std::mt19937 random_{7};
};

std::string AllOf(View& view) {
  GifPage page(view, "");
  return GifText(view) + ReportText(view, page) + CsvText(view);
}

TEST(Show, ComesToWhatAViewOfItsOwnDoes) {
  Requests requests;
  Request first;
  first.data = kCounties;
  View shown(first);
  int good = 0;
  for (int i = 0; i < 120; ++i) {
    const Request request = requests.Next();
    std::string wanted;
    try {
      View own(request);
      wanted = AllOf(own);
      ++good;
    } catch (const Error& error) {
      wanted = error.what();
    }
    std::string got;
    try {
      shown.Show(request);
      got = AllOf(shown);
    } catch (const Error& error) {
      got = error.what();
    }
    ASSERT_TRUE(got == wanted) << QueryText(request);
  }
  EXPECT_GT(good, 30) << "of 120";
}

using Picture = std::unique_ptr<gdImage, void (*)(gdImagePtr)>;

// The colour of a pixel as 0x00BBGGRR.
unsigned long ColorAt(gdImagePtr picture, CPoint pixel) {
  const int color = gdImageGetPixel(picture, pixel.x, pixel.y);
  return static_cast<unsigned long>(gdImageRed(picture, color)) |
         static_cast<unsigned long>(gdImageGreen(picture, color)) << 8 |
         static_cast<unsigned long>(gdImageBlue(picture, color)) << 16;
}

TEST(AreaFinder, AgreesWithThePicture) {
  Requests requests;
  for (const auto& [data, query] : {std::pair{kCounties, "level=2"},
                                    {kCounties, "zoom=48"},
                                    {kCounties, "zoom=2&size=300x500"},
                                    {kCounties, "level=2&outline=48,113&outline=6,37"},
                                    {kCounties, "level=1&size=90x70"},
                                    {kTurning, "zoom=53"},
                                    {kTurning, "zoom=12"}}) {
    Request request;
    request.data = data;
    std::vector<std::string> problems;
    ReadQuery(request, std::string("no-title=1&no-legend=1&") + query, &problems);
    View view(request);
    std::string bytes = GifText(view);
    const Picture picture(gdImageCreateFromGifPtr(static_cast<int>(bytes.size()), bytes.data()),
                          &gdImageDestroy);
    AreaFinder finder(view);
    int inside = 0;
    for (int i = 0; i < 400; ++i) {
      const CPoint pixel{requests.Below(request.size.width), requests.Below(request.size.height)};
      const CMapOb* area = finder.At(pixel);
      const unsigned long color = ColorAt(picture.get(), pixel);
      if (color == 0) continue;  // a line, of one of two
      ASSERT_EQ(color, area == nullptr ? 0xFFFFFF : area->GetColor())
          << query << ' ' << pixel.x << ',' << pixel.y;
      if (area == nullptr) continue;
      ++inside;
      const CRect box = finder.BoxOf(*area);
      EXPECT_TRUE(box.left <= pixel.x && pixel.x <= box.right && box.top <= pixel.y &&
                  pixel.y <= box.bottom);
    }
    EXPECT_GT(inside, 20) << query;
  }
}

// Four squares about a fifth, one far above it, one aside, and one that has no outline.
class SquaresTest : public testing::Test {
 protected:
  SquaresTest() {
    std::string map =
        "[Map]\nVersion=Ortex 3.2\nMapName=Row\nLongLat=No\n[AreaLevels]\nName=Part\n";
    std::string data =
        "[MapDataFile]\nVersion=Ortex 3.2\nMapFile=row\nAreaLevels=1\nVariables=1\n"
        "Thousands=Comma\nDecimal=Dot\nNoValue=N/A\nMapLabel=~\n[Data]\nPart\tArea Name\ta,b\n";
    const int places[][2] = {{1, 1}, {1, 2}, {2, 1}, {1, 0}, {0, 1}, {1, 6}, {3, 3}};
    int key = 0;
    for (const auto& [x, y] : places) {
      const auto text = [](int a, int b) {
        return std::to_string(10 * a) + ' ' + std::to_string(10 * b) + '\n';
      };
      const std::string code = std::to_string(++key);
      map += "[GeoUnit]\nName=P" + code + "\nAreaStructure=" + code + "\n[Polygon]\n" + text(x, y) +
             text(x + 1, y) + text(x + 1, y + 1) + text(x, y + 1);
    }
    map += "[GeoUnit]\nName=P \"8\", x\nAreaStructure=8\n";
    for (int i = 1; i <= 8; ++i) {
      data += std::to_string(i) + "\t~\t" + (i == 2 ? "N/A" : std::to_string(i) + ".25") + '\n';
    }
    folder.Write("row.map", map);
    folder.Write("row.mdf", data);
    request.data = folder.Path("row.mdf");
    request.groups = 2;
  }

  TempDir folder;
  Request request;
};

// Without names of levels there is still one to draw.
TEST_F(SquaresTest, AreShownAgain) {
  std::string map = folder.Read("row.map");
  map.erase(map.find("[AreaLevels]"), std::string("[AreaLevels]\nName=Part\n").size());
  folder.Write("row.map", map);
  View view(request);
  const std::string first = GifText(view);
  view.Show(request);
  EXPECT_TRUE(GifText(view) == first);
}

TEST_F(SquaresTest, HaveNeighbours) {
  View view(request);
  const AreaFinder finder(view);
  const auto next = [&](std::size_t from, int right, int down) {
    return finder.NeighbourOf(*view.areas[from], right, down).GetArea().codes[0];
  };
  EXPECT_EQ((std::array{next(0, 0, -1), next(0, 1, 0), next(0, 0, 1), next(0, -1, 0)}),
            (std::array{2, 3, 4, 5}));
  EXPECT_EQ(next(5, 0, -1), 6) << "nothing lies above";
  EXPECT_EQ(next(1, 0, -1), 6) << "far ahead is better than near aside";
  EXPECT_EQ(next(5, 1, 0), 7) << "aside is better than nothing";
  EXPECT_EQ(next(7, 1, 0), 8) << "no outline, no place";
}

TEST_F(SquaresTest, BecomeATable) {
  View view(request);
  EXPECT_EQ(CsvText(view),
            "Key,Name,Part of,\"a,b\",Group\r\n"
            "1,P1,,1.25,1.25 to 5.24\r\n2,P2,,,No data\r\n3,P3,,3.25,1.25 to 5.24\r\n"
            "4,P4,,4.25,1.25 to 5.24\r\n5,P5,,5.25,5.25 to 8.25\r\n6,P6,,6.25,5.25 to 8.25\r\n"
            "7,P7,,7.25,5.25 to 8.25\r\n8,\"P \"\"8\"\", x\",,8.25,5.25 to 8.25\r\n");
}

TEST(Arguments, SaySafelyWhatWasAsked) {
  Request request;
  request.data = "-a b's.mdf";
  ReadQuery(request, "var=-x%24%28id%29&bounds=-1,2&zoom=1,2&box=1,2&box=1,3&reverse=1&title=");
  const std::vector<std::string> words = ArgumentsFor(request);
  EXPECT_EQ(words, (std::vector<std::string>{"./-a b's.mdf", "--var=-x$(id)", "--zoom", "1,2",
                                             "--bounds=-1,2", "--reverse", "--box", "1,2", "--box",
                                             "1,3", "--title="}));
  EXPECT_EQ(ShellText(words),
            R"('./-a b'\''s.mdf' '--var=-x$(id)' --zoom 1,2 --bounds=-1,2 --reverse --box 1,2)"
            " --box 1,3 --title=");
}

}  // namespace
}  // namespace vexel::test
