// A map with its data and legend, set up to show what a request asks for.

#ifndef VEXEL_KIT_VIEW_VIEW_H_
#define VEXEL_KIT_VIEW_VIEW_H_

#include <vexel/data/dataset.h>
#include <vexel/legend/legend.h>
#include <vexel/map/map.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kit/request/request.h"
#include "kit/view/listener.h"

namespace vexel {

// Loads, selects, zooms, calculates and classifies: from there on a page can be drawn of it. One
// thread works with a view; different threads may have views of their own.
struct VEXEL_API View {
  // Throws an Error: of kind request where the request names what the files do not hold, of kind
  // failure where a file cannot be loaded. What the engine has to say goes to the listener, which
  // stays the caller's and must outlive the view; without one it is kept in one of the view's own.
  explicit View(Request pageRequest, Listener* pageListener = nullptr);
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  // Shows what another request asks for, as a view of its own would, of the files that are loaded;
  // those that it names do not matter. Throws an Error, and then must be shown something else
  // before it is used again.
  void Show(Request pageRequest);

 private:
  void Prepare();

  std::unique_ptr<Listener> ownListener_;

 public:
  Listener& listener;
  Request request;
  Grouping grouping;

  CVELAMap map;
  CVELAData data;
  CLegend legend;

  // The areas on show, in the order in which they are painted.
  std::vector<CMapOb*> areas;
  std::vector<CMapOb*> outlines;
  std::vector<CMapOb*> boxes;

  // Sentences on what a user might not expect of the result.
  std::vector<std::string> notes;

 private:
  NumberSeparators hostSeparators_;  // without a request's own
};

// A number with the decimals of a column.
VEXEL_API std::string ColumnText(const View& view, int column, double value,
                                 const NumberSeparators& separators);

// The selected value of an area; nothing when it has none.
VEXEL_API std::optional<double> ValueOf(const View& view, const CMapOb& area);

// The same as text; `missing` when there is none.
VEXEL_API std::string ValueText(const View& view, const CMapOb& area,
                                const NumberSeparators& separators, const std::string& missing);

// What the page shows, without the place: the variable's name, or the calculation.
VEXEL_API std::string SubjectOf(View& view);

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_VIEW_H_
