// A page of whatever map is at hand, by every road that a host can take.

#ifndef VEXEL_FUZZ_PAGE_H_
#define VEXEL_FUZZ_PAGE_H_

#include <cstdint>

#include "data/dataset.h"
#include "legend/legend.h"
#include "map/map.h"

namespace vexel::fuzz {

// What a host chooses. Numbers outside what there is are brought into range.
struct View {
  std::uint8_t level = 1;
  std::uint8_t column = 0;
  std::uint8_t second = 0;  // 0 for none, else the second column of a calculation
  std::uint8_t groups = 5;
  std::uint8_t interval = 0;
  std::uint8_t palette = 0;
  std::uint8_t zoom = 0;  // the child of each level that is zoomed into, 0 for none
};

// The three objects of a page, linked.
struct Model {
  Model() {
    data.map = &map;
    map.data = &data;
    map.legend = &legend;
  }

  CVELAMap map;
  CVELAData data;
  CLegend legend;
};

// Draws and saves a page with everything that can be on one. A page ends early where the library
// refuses it: nothing is on show, a column is in no row, a polygon has no points.
void DrawPage(Model& model, const View& view, int width, int height);

}  // namespace vexel::fuzz

#endif  // VEXEL_FUZZ_PAGE_H_
