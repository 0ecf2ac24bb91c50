#include "kit/report/csv.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "kit/report/page_pieces.h"
#include "kit/request/markup.h"
#include "kit/request/values.h"
#include "kit/tables/csv_text.h"

namespace vexel {

namespace {

class Rows {
 public:
  void Cell(std::string_view text) {
    if (!isFirst_) text_ += ',';
    isFirst_ = false;
    AppendCsv(text_, XmlText(text));
  }

  void End() {
    text_ += "\r\n";
    isFirst_ = true;
  }

  std::string Take() && { return std::move(text_); }

 private:
  std::string text_;
  bool isFirst_ = true;
};

// What an area lies in below the draw root, the innermost first.
std::string ParentsOf(const View& view, const CMapOb* area, std::vector<const CMapOb*>& path) {
  FindPath(view.map, area, path);
  path.pop_back();
  std::string names;
  std::for_each(path.rbegin(), path.rend(), [&](const CMapOb* node) {
    names.append(names.empty() ? "" : ", ").append(node->GetName().View());
  });
  return names;
}

}  // namespace

std::string CsvText(View& view) {
  Rows rows;
  for (const std::string_view heading : {"Key", "Name", "Part of"}) rows.Cell(heading);
  rows.Cell(SubjectOf(view));
  rows.Cell("Group");
  rows.End();
  std::vector<const CMapOb*> path;
  for (const CMapOb* area : view.areas) {
    const std::optional<double> value = ValueOf(view, *area);
    const std::optional<int> group = value ? view.legend.GroupOf(*value) : std::nullopt;
    rows.Cell(KeyText(area->GetArea()));
    rows.Cell(area->GetName().View());
    rows.Cell(ParentsOf(view, area, path));
    rows.Cell(value ? NumberText(*value) : "");
    rows.Cell(view.legend.GetRow(group.value_or(CLegend::kNoDataSlot)).text);
    rows.End();
  }
  return std::move(rows).Take();
}

}  // namespace vexel
