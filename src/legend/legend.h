// The thematic classification of one map page: groups, bounds, labels, colours.

#ifndef VEXEL_LEGEND_LEGEND_H_
#define VEXEL_LEGEND_LEGEND_H_

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "brindle/text.h"
#include "data/areadata.h"
#include "platform/array.h"
#include "platform/export.h"
#include "platform/object.h"

class CMapOb;
class CVELAData;
class CVELAMap;

// The platform's font record, which a host hands to the platform's calls as it stands: names, order
// and sizes of the fields are the platform's. The GIF page draws with fonts of its own.
struct LOGFONT {
  std::int32_t lfHeight = -13;  // below 0: the height of the characters without their leading
  std::int32_t lfWidth = 0;     // 0: what goes with the height
  std::int32_t lfEscapement = 0;
  std::int32_t lfOrientation = 0;
  std::int32_t lfWeight = 400;  // of 1000: normal
  std::uint8_t lfItalic = 0;
  std::uint8_t lfUnderline = 0;
  std::uint8_t lfStrikeOut = 0;
  std::uint8_t lfCharSet = 0;
  std::uint8_t lfOutPrecision = 0;
  std::uint8_t lfClipPrecision = 0;
  std::uint8_t lfQuality = 0;
  std::uint8_t lfPitchAndFamily = 0x22;  // variable pitch, a face without serifs
  char lfFaceName[32] = "Arial";         // a host copies a C string into it
};
static_assert(sizeof(LOGFONT) == 60);

// One row of a legend. A value belongs to the group with the highest lower bound that is not above
// it; the upper bound is for display. Colours are 0x00BBGGRR.
struct LegendGroup {
  double lower = NO_DATA_VALUE;
  CVELAString lowerText;
  double upper = NO_DATA_VALUE;
  CVELAString upperText;
  std::uint32_t color = 0xFFFFFF;
  std::uint32_t customColor = 0xFFFFFF;
  CVELAString rangeLabel;
  CVELAString groupName;
  int count = 0;
};

// What a legend shows of a group: a swatch in the group's colour and a text.
struct LegendRow {
  int slot;                  // where the group stands in CLegend::groups
  const LegendGroup* group;  // the legend's
  std::string_view text;     // good as long as the group is not changed
};

// The host sets numGroups (1 to 7), intervalType and palette, for bounds of its own also `lower` of
// the groups, and calls UpdateData; the rest follows. All fields are the host's to read and write.
//
// After an update groups[numGroups].lower is the largest double, above every value; slot 7 is the
// group of the areas without data. Failures are CInvalidArgException: nothing at the draw level, a
// selected column that a row does not have, a number of groups outside 1 to 7. An interval type
// that there is not leaves the bounds as they stand, a palette that there is not the colours.
class VEXEL_API CLegend : public CObject {
 public:
  // How the bounds of the groups are found.
  enum IntervalType : int { equalCounts = 0, equalWidths = 1, hostBounds = 2 };

  // The colour schemes: those that are fixed, in the order of their tables, and the host's own.
  enum Palette : int {
    spectrum = 0,
    blue = 1,
    green = 2,
    red = 3,
    yellow = 4,
    grey = 5,
    custom = 6
  };

  static constexpr int kMostGroups = 7;
  static constexpr int kNoDataSlot = 7;

  CLegend();
  CLegend(const CLegend&) = delete;

  // Takes over the host's settings and the groups. The values gathered, their counts and the five
  // texts stay.
  void operator=(const CLegend& other);  // NOLINT: gives nothing, by custom

  // Nonzero when areas of the draw level have no value, so that the legend needs a row for them.
  int IsMissingData() const { return numMissing; }

  // The whole run for the draw root and draw level of the map: gathers and sorts the values of the
  // selected column, updates the legend, and colours the nodes.
  void UpdateData(CVELAMap* map, CVELAData* data);

  // Appends the selected value of each node of the subtree at that level, NO_DATA_VALUE for a node
  // without a row.
  void GetData(CMapOb* node, CVELAData* data, int level);

  // Finds the bounds of the groups from the values gathered.
  void UpdateIntervals();

  // The bounds, then counts, texts, labels and colours.
  void UpdateLegend();

  // Colours each node of the subtree at that level by its selected value.
  void UpdateColors(CMapOb* node, CVELAData* data, int level);

  // The group that takes a value, counted from 0: the one whose lower bound the value reaches while
  // it stays below that of the next. Nothing for NO_DATA_VALUE, and for a value below all groups.
  // This is the rule by which areas get their colours. Throws CInvalidArgException for a number of
  // groups outside 1 to 7.
  std::optional<int> GroupOf(double value) const;

  // The groups in use, numGroups of them, from the lowest on. Throws CInvalidArgException for more
  // than 7; less than 1 is none.
  std::span<const LegendGroup> GetGroups() const;

  // The row of a slot: its text is the group's name when names are to be shown, else its range.
  // Throws CInvalidArgException for a slot outside 0 to 7.
  LegendRow GetRow(int slot) const;

  // The rows of the legend from the top: the groups in use, then the areas without data when there
  // are any. Throws as GetGroups does.
  std::vector<LegendRow> GetRows() const;

  int hostFlag = 1;
  int drawFrame = 1;
  int customSaved = 0;  // the custom palette has taken over the colours in use
  int useGroupNames = 0;
  CVELAString title;
  LOGFONT titleFont;
  int numGroups = 1;
  int intervalType = IntervalType::equalCounts;
  int palette = Palette::spectrum;
  int reverseColors = 0;
  LOGFONT textFont;
  std::array<LegendGroup, 8> groups;
  vexel::GrowArray<double> values{100};  // ascending after UpdateData, the missing ones first
  int decimals = 0;
  int numMissing = 0;  // and so the index of the first real value
  int lastIndex = -1;
  CVELAString legendText = "Legend";
  CVELAString underText = "under";
  CVELAString orMoreText = "or more";
  CVELAString noDataText = "No data";
  CVELAString toText = "to";

 private:
  void CheckNumGroups() const;
  void EqualBounds(double step);
  double EqualBound(int group) const;
  void HostBounds(double step);
  void UpdateCounts();
  void UpdateTexts();
  void UpdatePalette();
  void FollowCustomColors();
  LegendGroup& Group(int index) { return groups[static_cast<std::size_t>(index)]; }
};

#endif  // VEXEL_LEGEND_LEGEND_H_
