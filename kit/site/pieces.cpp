#include "kit/site/pieces.h"

#include <algorithm>
#include <vector>

#include "kit/palettes/color.h"
#include "kit/publish/fills.h"
#include "kit/report/page_pieces.h"
#include "kit/request/hints.h"
#include "kit/request/markup.h"

namespace vexel {

namespace {

// Where a group's colour has less contrast to white paper than this, by WCAG 2, what pales around
// its areas becomes grey instead.
constexpr double kLeastContrast = 2.0;

std::string AreasText(std::integral auto count) { return Counted(count, "area"); }

bool IsPale(const View& view, const LegendRow& row) {
  return Contrast(row.group->color, view.request.publication.background.value_or(kWhite)) <
         kLeastContrast;
}

}  // namespace

Request BareRequest(Request request) {
  request.noTitle = true;
  request.noLegend = true;
  return request;
}

std::string LinkMarkup(std::string_view address, std::string_view markup,
                       std::string_view attributes) {
  if (address.empty()) return std::string(markup);
  std::string link = "<a href=\"";
  AppendMarkup(link, address);
  return link.append("\"").append(attributes).append(">").append(markup).append("</a>");
}

std::string NameMarkup(std::string_view name) {
  return "<bdi>" + MarkupText(XmlText(name)) + "</bdi>";
}

std::string SwatchMarkup(const View& view, int slot) {
  const bool isMissing = slot == CLegend::kNoDataSlot;
  const auto index = static_cast<std::size_t>(slot);
  std::string svg =
      "<svg class=\"swatch\" viewBox=\"0 0 12 12\" aria-hidden=\"true\"><path d=\"M0 0h12v12H0z\""
      " fill=\"";
  if (!isMissing || !HasVectors(view)) {
    return svg + ColorText(view.legend.groups[index].color) + "\"/></svg>";
  }
  const FillStyle fill = FillsOf(view)[index];
  svg += ColorText(fill.color);
  if (fill.hatch)
    svg += "\"/><path d=\"M-1 7l8-8M-1 13 13-1M5 13l8-8\" stroke=\"" + ColorText(*fill.hatch);
  return svg + "\"/></svg>";
}

std::string StripMarkup(const Palette& palette, int groups, bool reverse) {
  const auto row = ColorsOf(palette, groups);
  std::vector<std::uint32_t> colors(row.begin(), row.end());
  if (reverse) std::reverse(colors.begin(), colors.end());
  std::string svg = "<svg class=\"strip\" viewBox=\"0 0 " + std::to_string(groups) +
                    " 1\" preserveAspectRatio=\"none\" aria-hidden=\"true\">";
  for (std::size_t i = 0; i < colors.size(); ++i) {
    svg +=
        "<path fill=\"" + ColorText(colors[i]) + "\" d=\"M" + std::to_string(i) + " 0h1v1h-1z\"/>";
  }
  return svg + "</svg>";
}

std::string PathMarkup(const View& view, const Links& links) {
  std::vector<const CMapOb*> path;
  for (const CMapOb* node = view.map.GetDrawRoot(); node != nullptr; node = node->GetParent()) {
    path.push_back(node);
  }
  std::string items;
  for (auto node = path.rbegin(); node != path.rend(); ++node) {
    const std::string name = NameMarkup((*node)->GetName().View());
    items += *node == path.front()
                 ? "<li aria-current=\"page\">" + name + "</li>"
                 : "<li>" + LinkMarkup(links.ToPlace(*node == &view.map ? nullptr : *node), name) +
                       "</li>";
  }
  return items;
}

std::string LegendMarkup(const View& view, const Links& links, std::optional<int> chosen) {
  std::string rows;
  for (const LegendRow& row : view.legend.GetRows()) {
    const bool isChosen = chosen == row.slot;
    const std::string slot = std::to_string(row.slot);
    const std::string text =
        SwatchMarkup(view, row.slot) + "<span>" + MarkupText(XmlText(row.text)) + "</span>";
    const std::string address = links.ToSlot(isChosen ? std::nullopt : std::optional(row.slot));
    rows += "<tr data-slot=\"" + slot + (IsPale(view, row) ? "\" data-veil=\"dim" : "") +
            "\"><th scope=\"row\">" +
            LinkMarkup(address, text,
                       isChosen ? " aria-current=\"true\" id=\"slot-" + slot + "\""
                                : " id=\"slot-" + slot + "\"") +
            "</th><td class=\"n\">" + std::to_string(row.group->count) + "</td></tr>\n";
  }
  return "<table class=\"legend\">\n<thead><tr><th scope=\"col\">" +
         MarkupText(XmlText(view.legend.title.View())) +
         "</th><th scope=\"col\" class=\"n\">Areas</th></tr></thead>\n<tbody>\n" + rows +
         "</tbody>\n</table>\n";
}

std::string NotesMarkup(std::span<const std::string> notes) {
  if (notes.empty()) return {};
  std::string list = "<ul class=\"notes\">\n";
  for (const std::string& note : notes) list += "<li>" + MarkupText(XmlText(note)) + "</li>\n";
  return list + "</ul>\n";
}

std::string MissingMarkup(const View& view, const Links& links) {
  if (view.legend.numMissing <= 0) return {};
  constexpr int kMostNamed = 100;
  const int named = std::min(view.legend.numMissing, kMostNamed);
  std::string list;
  int count = 0;
  for (const CMapOb* area : view.areas) {
    if (ValueOf(view, *area)) continue;
    list += "<li>" + LinkMarkup(links.ToRow(*area), NameMarkup(area->GetName().View())) + "</li>\n";
    if (++count == named) break;
  }
  const int others = view.legend.numMissing - named;
  if (others > 0) {
    list +=
        "<li>" +
        LinkMarkup(links.ToSlot(CLegend::kNoDataSlot), "and " + std::to_string(others) + " more") +
        "</li>\n";
  }
  return "<details id=\"missing-list\">\n<summary>" + AreasText(view.legend.numMissing) +
         " without a value</summary>\n<ul class=\"names\">\n" + list + "</ul>\n</details>\n";
}

std::string AlternativeText(View& view) {
  return AlternativeText(view, XmlText(view.map.GenerateTitle().View()));
}

}  // namespace vexel
