#include "flaws.h"

#include <algorithm>

#include "kit/request/hints.h"

namespace vexel::import {

namespace {

struct FlawText {
  std::string_view name;
  std::string_view noun;
  std::string_view fate;  // behind "... area" and "... areas"
};

// In the order of the enumeration.
constexpr std::array<FlawText, kFlawCount> kTexts{{
    {"crossing", "area", "with rings that cross themselves or each other, repaired"},
    {"shortRing", "area", "with rings of fewer than three different points, which are left out"},
    {"notFinite", "area", "with points that are no numbers, which are left out"},
    {"dateLine", "area", "across the 180th meridian, cut there"},
    {"empty", "feature", "without an outline, left out"},
    {"notPolygon", "feature", "of points or lines, left out"},
    {"unkeyed", "feature", "without a key, left out"},
    {"sameKey", "feature", "with the key of an earlier one, a part of it"},
}};

}  // namespace

void Flaws::Add(Flaw flaw, const std::string& name) {
  Tally& tally = tallies_[static_cast<std::size_t>(flaw)];
  ++tally.count;
  if (tally.names.size() < kNamesKept) tally.names.push_back(name);
}

std::string_view Flaws::Name(Flaw flaw) { return kTexts[static_cast<std::size_t>(flaw)].name; }

std::string Flaws::Sentence(Flaw flaw) const {
  const Tally& tally = Of(flaw);
  if (tally.count == 0) return {};
  const FlawText& text = kTexts[static_cast<std::size_t>(flaw)];
  const std::vector<std::string_view> names(tally.names.begin(), tally.names.end());
  std::string sentence = Counted(tally.count, text.noun);
  sentence.append(" ").append(text.fate).append(": ").append(Joined(names));
  if (tally.count > names.size()) sentence += ", ...";
  return sentence;
}

bool Flaws::HasLoss() const {
  return std::any_of(tallies_.begin(), tallies_.end(), [this](const Tally& tally) {
    return tally.count > 0 && &tally != &Of(Flaw::dateLine) && &tally != &Of(Flaw::sameKey);
  });
}

}  // namespace vexel::import
