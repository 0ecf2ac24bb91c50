// A map with its data and legend, set up to show what the options say.

#ifndef VEXEL_APPS_VEXEL_VIEW_H_
#define VEXEL_APPS_VEXEL_VIEW_H_

#include <optional>
#include <string>
#include <vector>

#include "data/dataset.h"
#include "host.h"
#include "legend/legend.h"
#include "map/map.h"
#include "view_options.h"

namespace vexel::cli {

struct View {
  View();

  CVELAMap map;
  CVELAData data;
  CLegend legend;

  // The areas on show, in the order in which they are painted.
  std::vector<CMapOb*> areas;
  std::vector<CMapOb*> outlines;
  std::vector<CMapOb*> boxes;
};

// Loads, selects, zooms, calculates and classifies: from here on the page can be drawn. Throws
// UsageError where an option names what the files do not hold.
void BuildView(View& view, const ViewOptions& options, CliHost& host);

// The selected value of an area; nothing when it has none.
std::optional<double> ValueOf(const View& view, const CMapOb& area);

// The same as text; `missing` when there is none.
std::string ValueText(const View& view, const CMapOb& area, const NumberSeparators& separators,
                      const std::string& missing);

// The group of a value, counted from 0, by the rule that colours the areas.
std::optional<int> GroupOf(const CLegend& legend, double value);

// What the page shows, without the place: the variable's name, or the calculation.
std::string SubjectOf(View& view);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_VIEW_H_
