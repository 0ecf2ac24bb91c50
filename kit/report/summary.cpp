#include "kit/report/summary.h"

#include <algorithm>

#include "kit/files/printable.h"

namespace vexel {

namespace {

constexpr std::size_t kRowsNamed = 5;

// Columns on a terminal: every byte of UTF-8 that begins a character.
std::size_t Width(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
  }));
}

std::string AreasText(int count) {
  return std::to_string(count) + (count == 1 ? " area" : " areas");
}

}  // namespace

std::string Aligned(const Lines& lines, std::string_view indent) {
  std::vector<std::size_t> widths;
  for (const auto& line : lines) {
    widths.resize(std::max(widths.size(), line.size()));
    for (std::size_t i = 0; i < line.size(); ++i) widths[i] = std::max(widths[i], Width(line[i]));
  }
  std::string text;
  for (const auto& line : lines) {
    text += indent;
    for (std::size_t i = 0; i < line.size(); ++i) {
      const std::string pad(widths[i] - Width(line[i]), ' ');
      if (i == 0) {
        text += line[i] + (line.size() > 1 ? pad : "");
      } else {
        text += "  " + pad + line[i];
      }
    }
    text += '\n';
  }
  return text;
}

std::string LostRowsText(std::span<const LostRow> rows) {
  std::string text = std::to_string(rows.size()) +
                     (rows.size() == 1 ? " row found no area: " : " rows found no area: ");
  for (std::size_t i = 0; i < std::min(rows.size(), kRowsNamed); ++i) {
    if (i > 0) text += "; ";
    text += rows[i].codes;
    if (rows[i].name != "~") text += " (" + Printable(rows[i].name) + ')';
  }
  if (rows.size() > kRowsNamed) text += "; ...";
  return text;
}

std::string SummaryText(View& view) {
  const CLegend& legend = view.legend;
  Lines lines;
  for (const LegendGroup& group : legend.GetGroups()) {
    const std::string to(legend.toText.View());
    std::vector<std::string> line;
    if (!view.request.groupNames.empty()) line.push_back(Printable(group.groupName.View()));
    line.emplace_back();
    line.emplace_back(group.lowerText.View());
    line.push_back(to);
    line.emplace_back(group.upperText.View());
    line.push_back(AreasText(group.count));
    lines.push_back(std::move(line));
  }
  const LegendGroup& missing = legend.groups[CLegend::kNoDataSlot];
  std::vector<std::string> last(lines.front().size());
  last.front() = Printable(legend.noDataText.View());
  last.back() = AreasText(missing.count);
  lines.push_back(std::move(last));

  std::string text = Printable(view.map.GenerateTitle().View()) + '\n' + Aligned(lines, "  ");
  const auto& lost = view.listener.GetLostRows();
  if (!lost.empty()) text += LostRowsText(lost) + '\n';
  return text;
}

}  // namespace vexel
