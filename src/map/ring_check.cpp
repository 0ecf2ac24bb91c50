#include "map/ring_check.h"

#include <algorithm>
#include <cmath>

#include "messages/remarks.h"

namespace vexel {

namespace {

constexpr float kHalfTurn = 180.0F;    // degrees of longitude to either side
constexpr float kQuarterTurn = 90.0F;  // degrees of latitude to either side
constexpr int kLeastOfRing = 3;

bool IsBeyondDegrees(const tagVELAPOINTF& point) {
  return std::abs(point.x) > kHalfTurn || std::abs(point.y) > kQuarterTurn;
}

// Different points of a ring, as far as 3, which mostly are its first.
int CountDifferent(std::span<const tagVELAPOINTF> ring) {
  const auto isAt = [](const tagVELAPOINTF& a) {
    return [=](const tagVELAPOINTF& b) { return a.x == b.x && a.y == b.y; };
  };
  if (ring.empty()) return 0;
  const auto second = std::find_if_not(ring.begin() + 1, ring.end(), isAt(ring.front()));
  if (second == ring.end()) return 1;
  const auto isThird = [&](const tagVELAPOINTF& point) {
    return !isAt(ring.front())(point) && !isAt(*second)(point);
  };
  return std::any_of(second + 1, ring.end(), isThird) ? kLeastOfRing : 2;
}

std::string Pair(double a, const char* between, double b) {
  return ShortestText(a) + between + ShortestText(b);
}

void DoubtPointsBeyondDegrees(std::span<const tagVELAPOINTF> ring, const CRectF& bounds,
                              std::vector<RingDoubt>& doubts) {
  if (!IsBeyondDegrees({bounds.left, bounds.top}) &&
      !IsBeyondDegrees({bounds.right, bounds.bottom})) {
    return;
  }
  const auto found = std::find_if(ring.begin(), ring.end(), IsBeyondDegrees);
  if (found == ring.end()) return;
  doubts.push_back(
      {RemarkKind::beyondDegrees, &*found, Pair(double{found->x}, " ", double{found->y})});
}

void DoubtJumps(std::span<const tagVELAPOINTF> ring, const CRectF& bounds,
                std::vector<RingDoubt>& doubts) {
  if (bounds.right - bounds.left <= kHalfTurn) return;
  // The last edge leads back to the first point.
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const tagVELAPOINTF& from = ring[i];
    const tagVELAPOINTF& to = ring[(i + 1) % ring.size()];
    if (std::abs(to.x - from.x) <= kHalfTurn) continue;
    doubts.push_back(
        {RemarkKind::jumpAcrossDateLine, &to, Pair(double{from.x}, " to ", double{to.x})});
    return;
  }
}

}  // namespace

std::vector<RingDoubt> DoubtsOfRing(std::span<const tagVELAPOINTF> ring, const CRectF& bounds,
                                    bool inDegrees) {
  std::vector<RingDoubt> doubts;
  const int different = CountDifferent(ring);
  if (different < kLeastOfRing) {
    doubts.push_back({RemarkKind::shortRing, nullptr, "", kLeastOfRing, different});
  }
  if (!inDegrees || ring.empty()) return doubts;
  DoubtPointsBeyondDegrees(ring, bounds, doubts);
  DoubtJumps(ring, bounds, doubts);
  return doubts;
}

// Latitudes never leave 90 degrees; where the second numbers do and the first do not, they stand
// the other way round.
std::string LatitudeFirst(const CRectF& bounds) {
  const auto isWithin = [](float least, float most, float limit) {
    return least >= -limit && most <= limit;
  };
  if (isWithin(bounds.top, bounds.bottom, kQuarterTurn) ||
      !isWithin(bounds.top, bounds.bottom, kHalfTurn) ||
      !isWithin(bounds.left, bounds.right, kQuarterTurn)) {
    return {};
  }
  return "the first numbers go " + Pair(double{bounds.left}, " to ", double{bounds.right}) +
         ", the second " + Pair(double{bounds.top}, " to ", double{bounds.bottom});
}

}  // namespace vexel
