#include "kit/publish/coverage.h"

#include <utility>

namespace vexel {

void Coverage::Begin(int width, int height) {
  width_ = width;
  height_ = height;
  // What lies right of the last pixel has a cell to go to.
  stride_ = (static_cast<std::size_t>(width) + 1 + kWordBits) / kWordBits * kWordBits;
  const std::size_t count = stride_ * static_cast<std::size_t>(height);
  if (cells_.size() >= count) return;
  cells_.resize(count);
  touched_.resize(count / kWordBits);
}

void Coverage::AddEdge(PixelPoint from, PixelPoint to) {
  if (from.y == to.y) return;
  // Both directions are computed as one, so that they add up to nothing.
  float sign = 1.0F;
  if (from.y > to.y) {
    std::swap(from, to);
    sign = -1.0F;
  }
  const auto bottom = static_cast<float>(height_);
  const auto right = static_cast<float>(width_);
  if (to.y <= 0.0F || from.y >= bottom) return;
  const float slope = (to.x - from.x) / (to.y - from.y);
  if (from.y < 0.0F) from = {from.x - from.y * slope, 0.0F};
  if (to.y > bottom) to = {to.x - (to.y - bottom) * slope, bottom};
  // What is beyond a side counts as on it.
  if (std::min(from.x, to.x) >= 0.0F && std::max(from.x, to.x) <= right) {
    AddInside(from, to, sign);
    return;
  }
  const auto yAt = [&](float x) { return std::clamp(from.y + (x - from.x) / slope, from.y, to.y); };
  PixelPoint last{std::clamp(from.x, 0.0F, right), from.y};
  const bool isRising = to.x >= from.x;
  for (const float side : {isRising ? 0.0F : right, isRising ? right : 0.0F}) {
    if ((from.x < side) == (to.x < side)) continue;
    const PixelPoint crossing{side, std::max(yAt(side), last.y)};
    AddInside(last, crossing, sign);
    last = crossing;
  }
  AddInside(last, {std::clamp(to.x, 0.0F, right), to.y}, sign);
}

// From above downward, with both ends within the rectangle.
void Coverage::AddInside(PixelPoint from, PixelPoint to, float sign) {
  if (from.y >= to.y) return;
  const float slope = (to.x - from.x) / (to.y - from.y);
  const float left = std::min(from.x, to.x);
  const float right = std::max(from.x, to.x);
  const int last = std::min(static_cast<int>(to.y), height_ - 1);
  float x = from.x;
  float y = from.y;
  for (int row = static_cast<int>(from.y); row <= last; ++row) {
    const float yNext = std::min(static_cast<float>(row + 1), to.y);
    const float xNext =
        row == last ? to.x : std::clamp(from.x + (yNext - from.y) * slope, left, right);
    AddInRow(static_cast<std::size_t>(row), x, xNext, (yNext - y) * sign);
    x = xNext;
    y = yNext;
  }
}

void Coverage::AddInRow(std::size_t row, float x, float xNext, float cover) {
  const float left = std::min(x, xNext);
  const float right = std::max(x, xNext);
  const int first = static_cast<int>(left);
  const int last = static_cast<int>(right);
  if (first == last) {
    AddToCell(row, first, (left + right) * 0.5F - static_cast<float>(first), cover);
    return;
  }
  const float coverOfPixel = cover / (right - left);
  float at = left;
  for (int column = first; column <= last; ++column) {
    const auto begin = static_cast<float>(column);
    const float next = std::min(begin + 1.0F, right);
    AddToCell(row, column, (at + next) * 0.5F - begin, (next - at) * coverOfPixel);
    at = next;
  }
}

void Coverage::AddToCell(std::size_t row, int column, float meanX, float cover) {
  const std::size_t cell = row * stride_ + static_cast<std::size_t>(column);
  const float beyond = cover * meanX;
  cells_[cell] += cover - beyond;
  cells_[cell + 1] += beyond;
  touched_[cell / kWordBits] |= std::uint64_t{1} << cell % kWordBits;
  touched_[(cell + 1) / kWordBits] |= std::uint64_t{1} << (cell + 1) % kWordBits;
}

}  // namespace vexel
