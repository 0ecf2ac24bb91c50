#include "apps/serve/pages/frame.h"

#include <array>

#include "apps/serve/answer.h"
#include "kit/report/area_search.h"
#include "kit/report/base_style.h"
#include "kit/request/hints.h"
#include "kit/request/markup.h"
#include "kit/site/script.h"
#include "kit/site/style.h"

namespace vexel::serve {

namespace {

constexpr std::string_view kIcon =
    R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16"><path fill="#c6dbef" d="M1 1h8v6H1z"/><path fill="#6baed6" d="M9 1h6v9H9z"/><path fill="#2171b5" d="M1 7h8v8H1z"/><path fill="#08306b" d="M9 10h6v5H9z"/></svg>)";

constexpr std::string_view kStyleName = "viewer.css";
constexpr std::string_view kScriptName = "viewer.js";
constexpr std::string_view kIconName = "icon.svg";

std::string AddressFor(const Site& site, std::string_view name) {
  for (const Asset& asset : Assets()) {
    if (asset.name != name) continue;
    return MarkupText(site.base) + "/assets/" + std::string(name) + "?v=" + asset.version;
  }
  return {};
}

}  // namespace

std::span<const Asset> Assets() {
  static const std::string style = std::string(kBaseStyle) + std::string(kSiteStyle);
  static const std::string script = std::string(kAreaSearch) + std::string(kSiteScript);
  const auto made = [](std::string_view name, std::string_view type, std::string_view text) {
    return Asset{name, type, text, TagOf(text)};
  };
  static const std::array assets{made(kStyleName, "text/css; charset=utf-8", style),
                                 made(kScriptName, "text/javascript; charset=utf-8", script),
                                 made(kIconName, "image/svg+xml", kIcon)};
  return assets;
}

std::string Framed(const Site& site, const Frame& frame) {
  std::string page =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>";
  AppendMarkup(page, XmlText(frame.title));
  page += "</title>\n<link rel=\"icon\" href=\"" + AddressFor(site, kIconName) +
          "\">\n<link rel=\"stylesheet\" href=\"" + AddressFor(site, kStyleName) + "\">\n";
  if (!frame.canonical.empty()) {
    page += "<link rel=\"canonical\" href=\"" + MarkupText(frame.canonical) + "\">\n";
  }
  if (frame.hasScript) {
    page += "<script defer src=\"" + AddressFor(site, kScriptName) + "\"></script>\n";
  }
  page += "</head>\n<body>\n";
  if (!frame.skip.empty()) {
    page += "<a class=\"skip\" href=\"#" + frame.skip + "\">" + frame.skipText + "</a>\n";
  }
  page += "<header class=\"top\"><a href=\"" + MarkupText(site.base) +
          "/\">All data sets</a></header>\n<main id=\"main\" tabindex=\"-1\">\n";
  return page.append(frame.main).append("</main>\n</body>\n</html>\n");
}

std::string CatalogPage(const Site& site, std::span<const DataSet> sets) {
  Frame frame;
  frame.title = "Data sets";
  frame.main = "<h1>Data sets</h1>\n<ul class=\"sets\">\n";
  for (const DataSet& set : sets) {
    const std::string name = MarkupText(XmlText(set.title.empty() ? set.set : set.title));
    frame.main += "<li>";
    if (set.trouble.empty()) {
      Show show;
      show.set = set.set;
      frame.main +=
          "<a href=\"" + MarkupText(site.base + AddressOf(show)) + "\"><bdi>" + name + "</bdi></a>";
    } else {
      frame.main += "<bdi>" + name + "</bdi> <span class=\"trouble\">" +
                    MarkupText(XmlText(set.trouble)) + "</span>";
    }
    std::string facts = set.title.empty() ? "" : XmlText(set.set);
    const auto add = [&](const std::string& fact) { facts += (facts.empty() ? "" : ", ") + fact; };
    if (set.areas > 0) add(Counted(set.areas, "area"));
    if (set.variables > 0) add(Counted(set.variables, "variable"));
    if (!facts.empty()) frame.main += " <span class=\"soft\">" + MarkupText(facts) + "</span>";
    frame.main += "</li>\n";
  }
  if (sets.empty()) frame.main += "<li>There are none.</li>\n";
  frame.main += "</ul>\n";
  return Framed(site, frame);
}

std::string ErrorPage(const Site& site, int status, std::string_view text) {
  constexpr int kNotFound = 404;
  Frame frame;
  frame.title = status == kNotFound ? "There is no such page" : "This cannot be shown";
  frame.main = "<h1>" + frame.title + "</h1>\n<p>" + MarkupText(XmlText(text)) +
               "</p>\n<p class=\"soft\">Status " + std::to_string(status) + "</p>\n";
  return Framed(site, frame);
}

}  // namespace vexel::serve
