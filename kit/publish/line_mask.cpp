#include "kit/publish/line_mask.h"

#include <algorithm>
#include <cmath>

namespace vexel {

LineMask::LineMask(int width, int height)
    : width_(width),
      height_(height),
      parts_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

void LineMask::SetLineWidth(float pixels) {
  half_ = pixels * 0.5F;
  reach_ = half_ + 0.5F;
  most_ = std::min(pixels, 1.0F);
}

void LineMask::AddLine(PixelPoint from, PixelPoint to) {
  // Pixels whose middle is within reach, at half a pixel from their corner.
  const auto firstWithin = [this](float least, int limit) {
    return std::clamp(static_cast<int>(std::ceil(least - reach_ - 0.5F)), 0, limit);
  };
  const auto endWithin = [this](float most, int limit) {
    return std::clamp(static_cast<int>(std::floor(most + reach_ - 0.5F)) + 1, 0, limit);
  };
  const PixelRect rect{
      firstWithin(std::min(from.x, to.x), width_), firstWithin(std::min(from.y, to.y), height_),
      endWithin(std::max(from.x, to.x), width_), endWithin(std::max(from.y, to.y), height_)};
  if (rect.IsEmpty()) return;
  drawn_ = {std::min(drawn_.left, rect.left), std::min(drawn_.top, rect.top),
            std::max(drawn_.right, rect.right), std::max(drawn_.bottom, rect.bottom)};
  const PixelPoint way{to.x - from.x, to.y - from.y};
  const float square = way.x * way.x + way.y * way.y;
  const float perLength = square > 0.0F ? 1.0F / square : 0.0F;
  // A long line is within reach of a part of each row alone.
  constexpr float kLong = 8.0F;
  const bool isLong = std::fabs(way.x) > kLong && way.y != 0.0F;
  const float across = isLong ? reach_ * std::sqrt(square) / std::fabs(way.y) : 0.0F;
  for (int y = rect.top; y < rect.bottom; ++y) {
    int first = rect.left;
    int end = rect.right;
    if (isLong) {
      const float middle = static_cast<float>(y) + 0.5F;
      const float x = from.x + (middle - from.y) * way.x / way.y;
      const auto least = static_cast<float>(first);
      const auto most = static_cast<float>(end);
      first = static_cast<int>(std::clamp(x - across - 1.0F, least, most));
      end = static_cast<int>(std::clamp(x + across + 1.0F, least, most));
    }
    DrawRow(y, first, end, from, way, perLength);
  }
}

void LineMask::DrawRow(int y, int first, int end, PixelPoint from, PixelPoint way,
                       float perLength) {
  constexpr float kAll = 255.0F;
  std::uint8_t* const row = parts_.data() + Place(0, y);
  const float dy = static_cast<float>(y) + 0.5F - from.y;
  constexpr float kToNearest = 0.5F;
  for (int x = first; x < end; ++x) {
    const float dx = static_cast<float>(x) + 0.5F - from.x;
    const float along = std::clamp((dx * way.x + dy * way.y) * perLength, 0.0F, 1.0F);
    const float offX = dx - along * way.x;
    const float offY = dy - along * way.y;
    const float square = offX * offX + offY * offY;
    if (square >= reach_ * reach_) continue;
    const float part = std::min(reach_ - std::sqrt(square), most_);
    row[x] = std::max(row[x], static_cast<std::uint8_t>(part * kAll + kToNearest));
  }
}

}  // namespace vexel
