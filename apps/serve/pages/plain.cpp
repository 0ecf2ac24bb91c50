// The least that pages can be; goes when there are pages.

#include "apps/serve/pages/pages.h"
#include "kit/request/markup.h"
#include "kit/view/area_finder.h"

namespace vexel::serve {

std::span<const Asset> Assets() { return {}; }

std::string CatalogPage(const Site& site, std::span<const DataSet> sets) {
  std::string page = "<!DOCTYPE html>\n";
  for (const DataSet& set : sets) {
    Show show;
    show.set = set.set;
    page += "<p><a href=\"" + site.base + MarkupText(AddressOf(show)) + "\">" +
            MarkupText(set.set) + "</a> " + MarkupText(set.trouble) + "</p>\n";
  }
  return page;
}

std::string MapPage(const Site& site, View& view, const Show& show, const std::string& trouble) {
  return "<!DOCTYPE html>\n<h1>" + MarkupText(SubjectOf(view)) + "</h1>\n<p>" +
         MarkupText(trouble) + "</p>\n<img src=\"" + site.base +
         MarkupText(AddressOf(show, Part::svg)) + "\">\n";
}

std::string ErrorPage(const Site& /*site*/, int status, std::string_view text) {
  return "<!DOCTYPE html>\n<h1>" + std::to_string(status) + "</h1>\n<p>" + MarkupText(text) +
         "</p>\n";
}

std::string OutlinesJson(View& /*view*/, const Show& /*show*/) { return "{}\n"; }

std::string AtJson(const Site& /*site*/, View& /*view*/, AreaFinder& /*finder*/,
                   const Target& /*target*/) {
  return "null\n";
}

std::string GoAddress(const Site& site, View& /*view*/, AreaFinder& /*finder*/,
                      const Target& target) {
  return site.base + AddressOf(target.show);
}

}  // namespace vexel::serve
