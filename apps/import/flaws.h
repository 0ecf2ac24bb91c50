// What is wrong with geometry, and what became of it.

#ifndef VEXEL_APPS_IMPORT_FLAWS_H_
#define VEXEL_APPS_IMPORT_FLAWS_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vexel::import {

enum class Flaw {
  crossing,    // rings that cross themselves or each other
  shortRing,   // rings of fewer than three different points
  notFinite,   // points that are no numbers
  dateLine,    // rings that cross the 180th meridian
  empty,       // features without an outline
  notPolygon,  // points and lines
  unkeyed,     // features without a key
  sameKey,     // features with the key of an earlier one
};
inline constexpr std::size_t kFlawCount = 8;

// Counts flaws, and keeps the names of the first areas that have them.
class Flaws {
 public:
  static constexpr std::size_t kNamesKept = 5;

  struct Tally {
    std::size_t count = 0;
    std::vector<std::string> names;
  };

  void Add(Flaw flaw, const std::string& name);
  const Tally& Of(Flaw flaw) const { return tallies_[static_cast<std::size_t>(flaw)]; }

  // A word for scripts, such as "crossing".
  static std::string_view Name(Flaw flaw);

  // A sentence with count and names, as in "2 areas ... were repaired: A, B"; empty for none.
  std::string Sentence(Flaw flaw) const;

  // Whether anything of the source is not in the map, or not as it was. Cuts at a meridian and
  // parts that are put together lose nothing.
  bool HasLoss() const;

 private:
  std::array<Tally, kFlawCount> tallies_;
};

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_FLAWS_H_
