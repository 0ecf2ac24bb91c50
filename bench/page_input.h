// What a page is made from, loaded.

#ifndef VEXEL_BENCH_PAGE_INPUT_H_
#define VEXEL_BENCH_PAGE_INPUT_H_

#include "data/dataset.h"
#include "flat_page.h"
#include "legend/legend.h"
#include "map/map.h"
#include "scale.h"

namespace vexel {

inline constexpr int kPageWidth = 800;
inline constexpr int kPageHeight = 600;

// A sample's map and data, linked and classified: its deepest level on show, the rate of
// unemployment in five groups of equal counts.
struct PageInput {
  explicit PageInput(const Sample& sample);

  CVELAMap map;
  CVELAData data;
  CLegend legend;
};

// Loaded on first use, once for each number of copies.
PageInput& GetPageInput(int copies);

// The polygons of that page where the library draws them, in its order and colours.
FlatPage MakeFlatPage(PageInput& input);

}  // namespace vexel

#endif  // VEXEL_BENCH_PAGE_INPUT_H_
