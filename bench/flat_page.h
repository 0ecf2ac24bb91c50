// A page as plain gd draws it: polygons that are in pixels already, each with a colour. It is the
// floor that drawing is held against, and knows nothing of the library.

#ifndef VEXEL_BENCH_FLAT_PAGE_H_
#define VEXEL_BENCH_FLAT_PAGE_H_

#include <gd.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vexel {

struct FlatPage {
  struct Polygon {
    int first;  // of its vertices in `points`
    int count;
    int color;  // in `colors`
  };

  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> colors;  // 0x00BBGGRR
  std::vector<Polygon> polygons;
  std::vector<gdPoint> points;
};

// A file of one machine's numbers, for the programs of one build. Both throw std::runtime_error.
void WriteFlatPage(const FlatPage& page, const std::string& path);
FlatPage ReadFlatPage(const std::string& path);

// An image of a page's size and colours. The page must outlive it; nothing in it is changed, but gd
// takes its vertices as if it might be.
class GdCanvas {
 public:
  explicit GdCanvas(FlatPage& page);

  // Polygon by polygon, inside and outline.
  void Draw();

  // The two apart.
  void Fill();
  void Outline();

  // As a GIF file. Throws std::runtime_error.
  void Save(const std::string& path);

 private:
  struct Destroy {
    void operator()(gdImage* image) const { gdImageDestroy(image); }
  };

  void Fill(const FlatPage::Polygon& polygon);
  void Outline(const FlatPage::Polygon& polygon);
  gdPoint* Points(const FlatPage::Polygon& polygon);

  FlatPage& page_;
  std::unique_ptr<gdImage, Destroy> image_;
  std::vector<int> colors_;
  int black_ = 0;
};

}  // namespace vexel

#endif  // VEXEL_BENCH_FLAT_PAGE_H_
