// What a user should know of a page before looking at it.

#include <vexel/render/latin2.h>

#include <algorithm>
#include <string_view>

#include "kit/request/hints.h"
#include "kit/request/parameters.h"
#include "kit/view/page.h"

namespace vexel {

namespace {

constexpr int kTitleHeight = 20;
constexpr int kTitleCharacter = 7;  // pixels that a character of the title takes
constexpr int kCentredAsIfWide =
    5;  // pixels that the title is centred by, which is why it sits right

bool IsTitleCut(std::string_view title, int width) {
  const int length = static_cast<int>(DrawnText(title).size());
  return std::max((width - kCentredAsIfWide * length) / 2, 0) + kTitleCharacter * length > width;
}

bool LosesLetters(std::string_view text) {
  const std::string drawn = DrawnText(text);
  return std::count(drawn.begin(), drawn.end(), '?') > std::count(text.begin(), text.end(), '?');
}

// Every text that the picture shows.
std::vector<std::string> TextsOn(View& view) {
  std::vector<std::string> texts;
  const auto add = [&](const CString& text) { texts.emplace_back(text.View()); };
  if (!view.request.noTitle) add(view.map.GenerateTitle());
  if (!view.request.noLegend) {
    add(view.legend.title);
    for (const LegendRow& row : view.legend.GetRows()) texts.emplace_back(row.text);
  }
  for (const CMapOb* area : view.boxes) add(area->GetName());
  return texts;
}

// The options that only a publication page hears.
std::string OptionsUnheard(const Request& request) {
  std::string names;
  for (const Parameter& parameter : AllParameters()) {
    if (parameter.group != ParameterGroup::publication || parameter.get(request).empty()) continue;
    names += (names.empty() ? "--" : ", --") + std::string(parameter.name);
  }
  return names;
}

}  // namespace

std::vector<std::string> PageNotes(View& view, const CMapGif& page) {
  const auto [width, height] = view.request.size;
  const CRect& map = page.GetMapRect();
  const CRect& legend = page.GetLegendRect();
  std::vector<std::string> notes;
  if (map.left >= map.right || map.top >= map.bottom) {
    notes.push_back("a page of " + SizeText(view.request.size) +
                    " leaves no room for the map beside its legend: take a larger --size or fewer"
                    " --groups");
  } else if (!view.request.noLegend && (legend.left < 0 || legend.top < kTitleHeight ||
                                        legend.right > width || legend.bottom > height)) {
    notes.push_back("the legend does not fit on a page of " + SizeText(view.request.size));
  }
  if (!view.request.noTitle && IsTitleCut(view.map.GenerateTitle().View(), width)) {
    notes.emplace_back("the title is too long for the page and is cut at the right");
  }
  if (const std::string unheard = OptionsUnheard(view.request); !unheard.empty()) {
    notes.emplace_back("a GIF page has no place for ")
        .append(unheard)
        .append("; SVG, PDF and PNG pages have");
  }
  const std::vector<std::string> texts = TextsOn(view);
  const auto lost = std::count_if(texts.begin(), texts.end(), LosesLetters);
  if (lost > 0) {
    notes.push_back("the picture's fonts lack letters of " +
                    Quoted(*std::find_if(texts.begin(), texts.end(), LosesLetters)) +
                    (lost > 1 ? " and " + std::to_string(lost - 1) + " more texts" : "") +
                    ", drawn as \"?\"; a web page has them whole");
  }
  return notes;
}

}  // namespace vexel
