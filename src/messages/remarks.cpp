#include "messages/remarks.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace vexel {

namespace {

using enum RemarkKind;

constexpr std::array kRemarks{
    RemarkEntry{notANumber, "not-a-number", "\"%f\" is no number and is read as %t"},
    RemarkEntry{numberInPart, "number-in-part", "\"%f\" is read as %t"},
    RemarkEntry{beyondRange, "beyond-range", "%f is beyond what can be held and is read as %t"},
    RemarkEntry{oddGrouping, "odd-grouping",
                "the digits of \"%f\" are not grouped by three; it is read as %t"},
    RemarkEntry{manyDecimals, "many-decimals",
                "\"%f\" gives the column %n decimals, all of which will be shown"},
    RemarkEntry{surplusCoordinates, "surplus-coordinates",
                "\"%f\" behind the second number of a point is passed over"},
    RemarkEntry{beyondDegrees, "beyond-degrees",
                "the point %f lies beyond 180 degrees of longitude or 90 degrees of latitude"},
    RemarkEntry{jumpAcrossDateLine, "jump-across-180",
                "the ring jumps from %f degrees of longitude, the long way around the earth"},
    RemarkEntry{shortRing, "short-ring",
                "a ring of %n different points encloses nothing; it takes %e"},
    RemarkEntry{latitudeFirst, "latitude-first",
                "a map of longitude and latitude seems to hold latitude first: %f"},
    RemarkEntry{coarseNearEquator, "coarse-near-equator",
                "a map whose middle lies so close to the equator (%f degrees) is drawn in no more "
                "than %n steps from north to south; project it beforehand and write LongLat=No, or "
                "let its frame reach further north or south"},
    RemarkEntry{holeInDoubt, "hole-in-doubt", "\"%f\" makes the polygon a hole"},
    RemarkEntry{duplicateKey, "duplicate-key",
                "the map has another area with this key before it; both get the values of its row, "
                "and the first its name"},
    RemarkEntry{keyOfAnotherParent, "key-of-another-parent",
                "the area stands in group %t, which its key does not begin with"},
    RemarkEntry{keyOfAnotherLevel, "key-of-another-level",
                "a key of %n codes on level %e of the map"},
    RemarkEntry{noKey, "no-key", "area \"%f\" has no AreaStructure and will find no data"},
    RemarkEntry{noName, "no-name", "there is no name"},
    RemarkEntry{notUtf8, "not-utf8", "\"%f\" is no UTF-8"},
    RemarkEntry{noEndGroup, "no-end-group", "the group has no [EndGroup]"},
    RemarkEntry{surplusEndGroup, "surplus-end-group",
                "there is no group that this [EndGroup] could end; the map ends here and what "
                "follows begins another"},
    RemarkEntry{emptyCell, "empty-cell",
                "an empty cell moves all cells behind it to the left; of %e cells there are %n"},
    RemarkEntry{blanksAroundCell, "blanks-around-cell", "\"%f\" has blanks around it"},
    RemarkEntry{surplusHeading, "surplus-heading",
                "\"%f\" is one column more than Variables says; it and what is behind it is passed "
                "over"},
    RemarkEntry{duplicateRow, "duplicate-row",
                "the area has a row at line %n already, whose values count; of the names the last "
                "one does"},
    RemarkEntry{noRows, "no-rows", "the table has no rows"},
    RemarkEntry{blanksInWord, "blanks-in-word", "\"%f\" was meant to be %t, perhaps"},
    RemarkEntry{unknownVersion, "unknown-version",
                "version \"%f\" is unknown and is taken for one in which code 0 means none"},
    RemarkEntry{neitherYesNorNo, "neither-yes-nor-no",
                "LongLat=%f is neither Yes nor No and changes nothing"},
    RemarkEntry{repeatedKeyword, "repeated-keyword", "%f stands in this head already"},
    RemarkEntry{notOpened, "not-opened", "the file cannot be opened: %r"},
    RemarkEntry{writtenInPlace, "written-in-place",
                "no file can be made beside it (%r), so it is written over in its place"},
    RemarkEntry{endsInFloats, "ends-in-second-half",
                "the file ends in the midst of its second half, which holds the map units; it can "
                "be drawn, but not made a text map"},
};

constexpr RemarkEntry kNone{};

template <typename Number>
std::string Shortest(Number value) {
  std::array<char, 32> text;
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

constexpr std::size_t kLongestFound = 80;

// At most so many bytes, cut between characters.
std::string Shortened(std::string_view text) {
  if (text.size() <= kLongestFound) return std::string(text);
  const auto isInside = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
  std::size_t end = kLongestFound;
  while (end > 0 && isInside(text[end])) --end;
  return std::string(text.substr(0, end)) + "...";
}

std::string ValueOf(char field, const RemarkInfo& remark) {
  switch (field) {
    case 'f':
      return Shortened(remark.found);
    case 't':
      return std::string(remark.taken);
    case 'e':
      return std::to_string(remark.expected);
    case 'n':
      return std::to_string(remark.counted);
    case 'c':
      return std::string(remark.columnName);
    case 'r':
      return std::string(remark.reason);
    default:
      return {};
  }
}

// What stands before the sentence.
std::string PlaceOf(const RemarkInfo& remark) {
  std::string place(remark.file);
  if (remark.line > 0) place.append(place.empty() ? "line " : ":") += std::to_string(remark.line);
  if (!place.empty()) place += ": ";
  std::string inside;
  if (!remark.area.empty()) inside.append("area ").append(remark.area);
  if (remark.column > 0) {
    inside.append(inside.empty() ? "" : ", ").append("column ") += std::to_string(remark.column);
    if (!remark.columnName.empty()) inside.append(" (").append(remark.columnName).append(")");
  } else if (!remark.columnName.empty()) {
    inside.append(inside.empty() ? "" : ", ").append(remark.columnName);
  }
  if (!inside.empty()) place.append(inside).append(": ");
  return place;
}

}  // namespace

std::span<const RemarkEntry> AllRemarks() noexcept { return kRemarks; }

const RemarkEntry& RemarkEntryOf(RemarkKind kind) noexcept {
  const auto* found = std::find_if(kRemarks.begin(), kRemarks.end(),
                                   [=](const RemarkEntry& entry) { return entry.kind == kind; });
  return found == kRemarks.end() ? kNone : *found;
}

std::string ShortestText(double value) { return Shortest(value); }

std::string ShortestText(float value) { return Shortest(value); }

std::string RemarkSentence(const RemarkInfo& remark) {
  std::string line = PlaceOf(remark);
  std::string_view rest = RemarkEntryOf(remark.kind).sentence;
  for (std::size_t mark = rest.find('%'); mark != std::string_view::npos; mark = rest.find('%')) {
    line.append(rest.substr(0, mark)).append(ValueOf(rest[mark + 1], remark));
    rest.remove_prefix(mark + 2);
  }
  return line.append(rest);
}

}  // namespace vexel
