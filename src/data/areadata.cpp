#include "data/areadata.h"

#include <algorithm>
#include <span>

#include "platform/exceptions.h"

namespace {

// The first values of a row, as many as another row has.
std::span<const double> FirstOf(const vexel::GrowArray<double>& values, int count) {
  if (values.GetSize() < count) AfxThrowInvalidArgException();
  return values.Elements().first(static_cast<std::size_t>(count));
}

}  // namespace

CObject* CAreaData::CreateObject() { return new CAreaData; }

CRuntimeClass* CAreaData::GetThisClass() {
  static constinit CRuntimeClass record{"CAreaData", &CAreaData::CreateObject,
                                        &CObject::GetThisClass};
  return &record;
}

CRuntimeClass* CAreaData::GetRuntimeClass() const { return GetThisClass(); }

void CAreaData::operator=(const CAreaData& other) {  // NOLINT: gives nothing, by custom
  if (this == &other) return;
  area = other.area;
  const int shared = std::min(values.GetSize(), other.values.GetSize());
  std::ranges::copy(FirstOf(other.values, shared), values.begin());
  if (shared < values.GetSize()) AfxThrowInvalidArgException();
}

int CAreaData::operator==(const CAreaData& other) const {
  if (!(area == other.area)) return 0;
  return std::ranges::equal(values.Elements(), FirstOf(other.values, values.GetSize())) ? 1 : 0;
}
