// How the values of a view are distributed, with the bounds of its groups.

#ifndef VEXEL_KIT_SITE_HISTOGRAM_H_
#define VEXEL_KIT_SITE_HISTOGRAM_H_

#include <cstddef>
#include <string>
#include <vector>

#include "kit/view/view.h"

namespace vexel {

inline constexpr int kBins = 40;

struct Histogram {
  // The part of a bin that belongs to one group. Those of a bin stand in the order of the groups.
  struct Part {
    int bin = 0;
    int slot = 0;
    std::size_t count = 0;
  };

  // Bins are equally wide in values or, where these are all above 0 and most of them would share a
  // bin, in their logarithms.
  bool isLogarithmic = false;
  double least = 0.0;
  double greatest = 0.0;
  std::vector<Part> parts;
  std::vector<double> bounds;  // between groups, as parts of the way from least to greatest
};

// Counts every value on show once.
VEXEL_API Histogram HistogramOf(const View& view);

// As an SVG element; nothing where there are fewer than two different values.
VEXEL_API std::string HistogramMarkup(View& view);

}  // namespace vexel

#endif  // VEXEL_KIT_SITE_HISTOGRAM_H_
