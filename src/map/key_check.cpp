#include "map/key_check.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <tuple>
#include <vector>

#include "map/mapob.h"
#include "platform/host.h"

namespace vexel {

namespace {

class KeyCheck {
 public:
  KeyCheck(std::span<const int> lines, std::string_view file) : lines_(lines), file_(file) {}

  void Run(const CMapOb& root, int firstChild) {
    CheckChildren(root, firstChild, 1);
    if (!mayHaveTwins_) return;
    next_ = 0;
    Gather(root, firstChild);
    TellTwins();
  }

 private:
  // An area that was passed, for a search for twins.
  struct Passed {
    const CMapOb* node;
    std::size_t number;  // in pre-order
  };

  // Children of which each key is the group's with one more code, in ascending order, cannot have
  // the key of any other area of such groups.
  void CheckChildren(const CMapOb& group, int first, int depth) {
    const int groupLevel = group.GetArea().GetLevel();
    bool ascends = true;
    std::int64_t before = std::numeric_limits<std::int64_t>::min();
    for (int i = first; i < group.GetNumChildren(); ++i) {
      const CMapOb& child = *group.GetChild(i);
      const std::size_t number = next_++;
      if (IsInPlace(child, group, groupLevel, depth)) {
        const std::int32_t code = LastCode(child, depth);
        ascends = ascends && code > before;
        before = code;
      } else {
        TellPlace(child, group, depth, number);
      }
      if (child.GetNumChildren() > 0) CheckChildren(child, 0, depth + 1);
    }
    if (!ascends && !mayHaveTwins_) mayHaveTwins_ = HasTwins(group, first, groupLevel, depth);
  }

  void Gather(const CMapOb& group, int first) {
    for (int i = first; i < group.GetNumChildren(); ++i) {
      const CMapOb& child = *group.GetChild(i);
      const std::size_t number = next_++;
      if (child.GetArea().GetLevel() > 0) passed_.push_back({&child, number});
      Gather(child, 0);
    }
  }

  static std::int32_t LastCode(const CMapOb& child, int depth) {
    return child.GetArea().codes[static_cast<std::size_t>(depth - 1)];
  }

  static bool IsInPlace(const CMapOb& child, const CMapOb& group, int groupLevel, int depth) {
    const auto& codes = child.GetArea().codes;
    if (depth > CAreaStruct::kNumCodes) return false;
    const auto* last = codes.begin() + depth - 1;
    return *last != CAreaStruct::kUnset &&
           std::all_of(last + 1, codes.end(), [](auto c) { return c == CAreaStruct::kUnset; }) &&
           BeginsAs(child.GetArea(), group.GetArea(), groupLevel);
  }

  static bool BeginsAs(const CAreaStruct& key, const CAreaStruct& group, int groupLevel) {
    return std::equal(group.codes.begin(), group.codes.begin() + groupLevel, key.codes.begin());
  }

  // What is wrong with a key that is not where it belongs.
  void TellPlace(const CMapOb& child, const CMapOb& group, int depth, std::size_t number) {
    const int level = child.GetArea().GetLevel();
    if (level == 0) {
      Tell({.kind = RemarkKind::noKey, .found = child.GetName().View()}, child, number);
      return;
    }
    mayHaveTwins_ = true;
    if (!BeginsAs(child.GetArea(), group.GetArea(), group.GetArea().GetLevel())) {
      const CVELAString groupKey = group.GetArea().GetAreasStr();
      Tell({.kind = RemarkKind::keyOfAnotherParent, .taken = groupKey.View()}, child, number);
    }
    if (level != depth) {
      Tell({.kind = RemarkKind::keyOfAnotherLevel, .expected = depth, .counted = level}, child,
           number);
    }
  }

  static bool HasTwins(const CMapOb& group, int first, int groupLevel, int depth) {
    std::vector<std::int32_t> codes;
    for (int i = first; i < group.GetNumChildren(); ++i) {
      const CMapOb& child = *group.GetChild(i);
      if (IsInPlace(child, group, groupLevel, depth)) codes.push_back(LastCode(child, depth));
    }
    std::sort(codes.begin(), codes.end());
    return std::adjacent_find(codes.begin(), codes.end()) != codes.end();
  }

  void TellTwins() {
    std::sort(passed_.begin(), passed_.end(), [](const Passed& a, const Passed& b) {
      return std::tie(a.node->GetArea().codes, a.number) <
             std::tie(b.node->GetArea().codes, b.number);
    });
    std::vector<Passed> twins;
    for (std::size_t i = 1; i < passed_.size(); ++i) {
      if (passed_[i].node->GetArea() == passed_[i - 1].node->GetArea()) twins.push_back(passed_[i]);
    }
    std::sort(twins.begin(), twins.end(),
              [](const Passed& a, const Passed& b) { return a.number < b.number; });
    for (const Passed& twin : twins) {
      Tell({.kind = RemarkKind::duplicateKey}, *twin.node, twin.number);
    }
  }

  void Tell(RemarkInfo remark, const CMapOb& node, std::size_t number) const {
    const CVELAString key = node.GetArea().GetAreasStr();
    remark.file = file_;
    remark.line = number < lines_.size() ? lines_[number] : 0;
    remark.area = key.View();
    CHost::GetCurrent().Remark(remark);
  }

  std::span<const int> lines_;
  std::string_view file_;
  std::size_t next_ = 0;  // of the area that is passed next, in pre-order
  bool mayHaveTwins_ = false;
  std::vector<Passed> passed_;
};

}  // namespace

void RemarkOnKeys(const CMapOb& root, int firstChild, std::span<const int> lines,
                  std::string_view file) {
  KeyCheck(lines, file).Run(root, firstChild);
}

}  // namespace vexel
