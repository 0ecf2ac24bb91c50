// Where the links of the viewer's pages lead: every state has an address.

#ifndef VEXEL_APPS_SERVE_PAGES_VIEWER_LINKS_H_
#define VEXEL_APPS_SERVE_PAGES_VIEWER_LINKS_H_

#include <string>

#include "apps/serve/pages/pages.h"
#include "apps/serve/show.h"
#include "kit/site/links.h"

namespace vexel::serve {

// Of a page that shows such a state. A level that is above what a place holds is left open there,
// and so is what is said of the table's rows.
class ViewerLinks : public Links {
 public:
  ViewerLinks(const Site& site, const View& view, const Show& show);

  std::string ToPlace(const CMapOb* area) const override;
  std::string ToRow(const CMapOb& area) const override;
  std::string ToSorted(std::string_view sort, bool down) const override;
  std::string ToRows(int page) const override;
  std::string ToSlot(std::optional<int> slot) const override;

  std::string To(Part part) const;
  std::string ToCatalog() const { return base_ + '/'; }
  std::string ToParent() const;  // empty on the whole map

  // The same for any area on show, with "{key}" for its codes.
  std::string PlacePattern() const;
  std::string RowPattern() const;

 private:
  Show WithoutRows() const;
  Show At(const CMapOb* area, int level) const;
  std::string Whole(const Show& show, Part part = Part::page) const {
    return base_ + AddressOf(show, part);
  }

  std::string base_;
  const View& view_;
  const Show& show_;
};

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_PAGES_VIEWER_LINKS_H_
