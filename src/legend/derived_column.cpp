// The calculated column of a data set.

#include "data/calculation.h"
#include "data/dataset.h"
#include "legend/legend.h"
#include "map/map.h"
#include "platform/host.h"
#include "platform/ref_or_throw.h"

namespace {

CLegend& LegendOf(const CVELAMap* map) { return vexel::RefOrThrow(vexel::RefOrThrow(map).legend); }

}  // namespace

// These two operations of a data set stand beside the legend, since a ratio takes its decimals from
// the values that the legend gathers, and the data set's own room does not know the legend.

void CVELAData::PerformCalc() {
  const vexel::WaitCursor wait;
  for (CAreaData& row : areas) {
    const double x = row.GetValue(var1Selected);
    const double y = row.GetValue(var2Selected);
    row.SetValue(numVars, vexel::Indicator(calcSelected, x, y));
  }
  const bool isPercent = calcSelected == vexel::percentChange || calcSelected == vexel::percent;
  int decimals = isPercent && !areas.IsEmpty() ? 1 : 0;
  if (calcSelected == vexel::ratio) {
    LegendOf(map).UpdateData(map, this);
    decimals = CalcNumDecimals();
  }
  varDecs[numVars] = decimals;
}

int CVELAData::CalcNumDecimals() { return vexel::TypicalDecimals(LegendOf(map).values.Elements()); }
