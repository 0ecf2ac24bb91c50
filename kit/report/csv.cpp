#include "kit/report/csv.h"

#include <optional>
#include <string_view>

#include "kit/publish/fills.h"
#include "kit/report/area_parents.h"
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

}  // namespace

std::string CsvText(View& view) {
  Rows rows;
  for (const std::string_view heading : {"Key", "Name", "Part of"}) rows.Cell(heading);
  rows.Cell(SubjectOf(view));
  rows.Cell("Group");
  rows.End();
  const AreaParents parents(view);
  for (std::size_t i = 0; i < view.areas.size(); ++i) {
    const CMapOb* const area = view.areas[i];
    const std::optional<double> value = ValueOf(view, *area);
    rows.Cell(KeyText(area->GetArea()));
    rows.Cell(area->GetName().View());
    rows.Cell(parents.TextFor(i));
    rows.Cell(value ? NumberText(*value) : "");
    rows.Cell(view.legend.GetRow(SlotOf(view, *area)).text);
    rows.End();
  }
  return std::move(rows).Take();
}

}  // namespace vexel
