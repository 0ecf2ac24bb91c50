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
  // A difference is one, also where the other row ends before this one does.
  const int shared = std::min(values.GetSize(), other.values.GetSize());
  if (!std::ranges::equal(FirstOf(values, shared), FirstOf(other.values, shared))) return 0;
  if (shared < values.GetSize()) AfxThrowInvalidArgException();
  return 1;
}
