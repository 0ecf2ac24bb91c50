#include "kit/publish/fills.h"

#include <optional>
#include <string>

#include "kit/palettes/color.h"

namespace vexel {

namespace {

constexpr std::uint32_t kBlack = 0x000000;
constexpr double kFaint = 0.15;  // of white in a dark paper
constexpr double kHatchInk = 0.35;

// Missing values have lines over their colour, as no group has. On a dark page that colour, which
// is white elsewhere, must not be the brightest of the map.
FillStyle MissingFill(const View& view) {
  const std::uint32_t paper = view.request.publication.background.value_or(kWhite);
  const std::uint32_t color =
      IsDark(paper) ? Mixed(paper, kWhite, kFaint) : view.legend.groups[CLegend::kNoDataSlot].color;
  return {"missing", color, Mixed(color, IsDark(color) ? kWhite : kBlack, kHatchInk), {}};
}

}  // namespace

std::vector<FillStyle> FillsOf(const View& view) {
  std::vector<FillStyle> fills;
  fills.reserve(CLegend::kNoDataSlot + 1);
  for (std::size_t slot = 0; slot < CLegend::kNoDataSlot; ++slot) {
    const bool isUsed = slot < static_cast<std::size_t>(view.legend.numGroups);
    fills.push_back(
        {"c" + std::to_string(slot), isUsed ? view.legend.groups[slot].color : kWhite, {}, {}});
  }
  fills.push_back(MissingFill(view));
  return fills;
}

int SlotOf(const View& view, const CMapOb& area) {
  const std::optional<double> value = ValueOf(view, area);
  const std::optional<int> group = value ? view.legend.GroupOf(*value) : std::nullopt;
  return group.value_or(CLegend::kNoDataSlot);
}

}  // namespace vexel
