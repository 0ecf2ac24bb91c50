#include "apps/serve/pages/viewer_links.h"

#include <algorithm>

namespace vexel::serve {

namespace {

// Where a browser finds the row that is kept.
constexpr const char* kRowMark = "#kept";

constexpr std::string_view kKeyMark = "{key}";

}  // namespace

ViewerLinks::ViewerLinks(const Site& site, const View& view, const Show& show)
    : base_(site.base), view_(view), show_(show) {}

Show ViewerLinks::WithoutRows() const {
  Show show = show_;
  show.rows = 1;
  show.area.reset();
  return show;
}

// What is below an area of that level; the map is null.
Show ViewerLinks::At(const CMapOb* area, int level) const {
  Show show = WithoutRows();
  show.find.clear();
  show.in.reset();
  show.request.zoom.reset();
  if (area != nullptr) show.request.zoom = area->GetArea();
  if (show.request.level && *show.request.level <= level) show.request.level.reset();
  show.request.outlines.clear();
  show.request.boxes.clear();
  return show;
}

std::string ViewerLinks::ToPlace(const CMapOb* area) const {
  return Whole(At(area, area == nullptr ? 0 : area->GetLevel()));
}

std::string ViewerLinks::ToRow(const CMapOb& area) const {
  Show show = WithoutRows();
  show.area = area.GetArea();
  return Whole(show) + kRowMark;
}

std::string ViewerLinks::ToSorted(std::string_view sort, bool down) const {
  Show show = WithoutRows();
  show.sort = sort;
  show.down = down;
  return Whole(show);
}

std::string ViewerLinks::ToRows(int page) const {
  Show show = WithoutRows();
  show.rows = page;
  return Whole(show);
}

std::string ViewerLinks::ToSlot(std::optional<int> slot) const {
  Show show = WithoutRows();
  show.in = slot;
  return Whole(show);
}

std::string ViewerLinks::To(Part part) const { return Whole(show_, part); }

std::string ViewerLinks::ToParent() const {
  const CMapOb* root = view_.map.GetDrawRoot();
  if (root == &view_.map) return {};
  const CMapOb* parent = root->GetParent();
  return ToPlace(parent == &view_.map ? nullptr : parent);
}

std::string ViewerLinks::PlacePattern() const {
  const Show show = At(nullptr, view_.map.GetDrawLevel());
  std::string address = AddressOf(show);
  address.insert(std::min(address.find('?'), address.size()), '/' + std::string(kKeyMark));
  return base_ + address;
}

std::string ViewerLinks::RowPattern() const {
  const std::string address = Whole(WithoutRows());
  const bool hasQuery = address.find('?') != std::string::npos;
  return address + (hasQuery ? "&" : "?") + "area=" + std::string(kKeyMark) + kRowMark;
}

}  // namespace vexel::serve
