// The texts that a page makes from the selection of its data set.

#include <algorithm>
#include <array>

#include "data/calculation.h"
#include "data/dataset.h"
#include "map/map.h"
#include "messages/messages.h"
#include "platform/profile.h"
#include "platform/ref_or_throw.h"

CVELAString CVELAMap::GenerateTitle() {
  const CVELAData& set = vexel::RefOrThrow(data);
  const CVELAString& root = drawRoot->GetName();
  const int calculation = set.GetCalcSelected();
  if (calculation < -1 || calculation > vexel::difference) return root;
  const CString first = set.GetVarName(set.GetVar1Selected());
  if (calculation == -1) return first + " - " + root;
  const std::array labels{&percentChangeLabel, &percentLabel, &ratioLabel, &differenceLabel};
  const bool isQuotient = calculation == vexel::percent || calculation == vexel::ratio;
  const CString second = set.GetVarName(set.GetVar2Selected());
  return first + (isQuotient ? " / " : " - ") + second + " (" +
         *labels[static_cast<std::size_t>(calculation)] + "): " + root;
}

CVELAString CVELAMap::GetDataStr(CMapOb* node) {
  CVELAData& set = vexel::RefOrThrow(data);
  const auto noData = [] { return CVELAString(vexel::MessageText(vexel::Message::noData)); };
  const CAreaData* row = set.FindAreaData(node->GetArea());
  if (row == nullptr) return noData();
  const int column = set.GetSelected();
  const double value = row->GetValue(column);
  if (value == NO_DATA_VALUE) return noData();
  const int decimals = set.GetVarDecs(column);
  const vexel::NumberSeparators separators = vexel::MachineSeparators({0, '.'});
  return d2txt(value, static_cast<unsigned>(std::max(decimals, 0)), separators.thousand,
               separators.decimal, 1);
}
