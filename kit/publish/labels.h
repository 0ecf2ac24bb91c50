// Labels on a publication page.

#ifndef VEXEL_KIT_PUBLISH_LABELS_H_
#define VEXEL_KIT_PUBLISH_LABELS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kit/publish/drawing.h"

namespace vexel {

struct Label {
  std::vector<std::string> lines;
  RingRange rings;  // of the area that it is about, in the drawing
  bool isWanted =
      false;  // asked for by itself: may be larger than its area, or beside it with a line to it
  bool hasPlate = false;  // stands on a box
  bool isBold = false;
  std::uint32_t color = 0;
  std::optional<std::uint32_t> halo;
};

// Adds the labels to the drawing, those that come first before the others. A label stands within
// its area, unless it is wanted, and on nothing of `taken` nor on another label; what finds no
// place is left out. `unit` is the size of plain text. Returns those left out, by their positions.
std::vector<std::size_t> PlaceLabels(Drawing& drawing, const std::vector<Label>& labels,
                                     const std::vector<PageArea>& taken, double unit,
                                     std::uint16_t plateFill);

}  // namespace vexel

#endif  // VEXEL_KIT_PUBLISH_LABELS_H_
