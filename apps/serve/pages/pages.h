// The pages of the viewer, as texts. Whoever calls has a view to itself that shows what the state
// asks for; nothing here is kept from one call to the next.

#ifndef VEXEL_APPS_SERVE_PAGES_PAGES_H_
#define VEXEL_APPS_SERVE_PAGES_PAGES_H_

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "apps/serve/show.h"
#include "kit/view/view.h"

namespace vexel {
class AreaFinder;
}

namespace vexel::serve {

// What all pages need to know of the server.
struct Site {
  std::string base;         // base path without a slash at its end; empty: none
  bool hasPrinter = false;  // whether PNG and PDF can be made
};

// A data set in the list of those that there are.
struct DataSet {
  std::string set;        // its name in addresses, decoded
  std::string title;      // the name of its map; empty: not known
  int variables = 0;      // how many; 0: not known
  std::size_t areas = 0;  // of the whole map; 0: not known
  std::string trouble;    // why it cannot be shown; empty: it can
};

// A file that the pages name, under "/assets/NAME?v=…".
struct Asset {
  std::string_view name;
  std::string_view mediaType;
  std::string_view text;
  std::string version;  // changes whenever the text does
};
std::span<const Asset> Assets();

// The whole document each. `trouble` says what of the state cannot be shown, and that the page
// shows something else therefore; empty: nothing. MapPage may show the variable to compare in
// between, and leaves the view as it was; finders of areas are not valid after it.
std::string CatalogPage(const Site& site, std::span<const DataSet> sets);
std::string MapPage(const Site& site, View& view, const Show& show, const std::string& trouble);
std::string ErrorPage(const Site& site, int status, std::string_view text);

// What the script finds areas by in a picture of few areas.
std::string OutlinesJson(View& view, const Show& show);

// What there is to tell of the area that `target` names by pixel of the GIF page, key, or way from
// a key: an object, or "null" for none.
std::string AtJson(View& view, AreaFinder& finder, const Target& target);

// The address, with the base path, to which a click on a pixel of the page's picture leads: that of
// the area there with what is below it; of one with nothing below it, the page with its row; or of
// the page itself.
std::string GoAddress(const Site& site, View& view, AreaFinder& finder, const Target& target);

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_PAGES_PAGES_H_
