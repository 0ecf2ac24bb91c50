#include "kit/site/compared.h"

#include <vexel/brindle/text.h>

#include <algorithm>

#include "kit/request/markup.h"
#include "kit/view/columns.h"

namespace vexel {

ComparedColumn::ComparedColumn(View& view, const std::string& variable)
    : view_(&view), column_(ColumnOf(view.data, "with", variable)) {}

std::string ComparedColumn::Name() const { return XmlText(view_->data.GetVarName(column_).View()); }

std::string ComparedColumn::TextFor(const CMapOb& area) const {
  const CAreaData* row = area.GetAreaData();
  const double value = row == nullptr ? NO_DATA_VALUE : row->GetValue(column_);
  if (value == NO_DATA_VALUE) return XmlText(view_->legend.noDataText.View());
  return ColumnText(*view_, column_, value, view_->listener.GetSeparators());
}

}  // namespace vexel
