#include "platform/object.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<CRuntimeClass*>& Registry() {
  static std::vector<CRuntimeClass*> records;
  return records;
}

}  // namespace

CObject* CRuntimeClass::CreateObject() const {
  return createObject == nullptr ? nullptr : createObject();
}

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
  const CRuntimeClass* record = this;
  while (record != nullptr && record != base) {
    record = record->getBaseClass == nullptr ? nullptr : record->getBaseClass();
  }
  return record != nullptr;
}

CRuntimeClass* CRuntimeClass::FromName(std::string_view className) {
  const auto& records = Registry();
  const auto found = std::find_if(records.begin(), records.end(), [&](const CRuntimeClass* record) {
    return record->className == className;
  });
  return found == records.end() ? nullptr : *found;
}

CObject* CRuntimeClass::CreateObject(std::string_view className) {
  const CRuntimeClass* record = FromName(className);
  return record == nullptr ? nullptr : record->CreateObject();
}

CRuntimeClass* CObject::GetThisClass() {
  static constinit CRuntimeClass record{"CObject", nullptr, nullptr};
  return &record;
}

CRuntimeClass* CObject::GetRuntimeClass() const { return GetThisClass(); }

void CObject::Serialize(CArchive& /*ar*/) {}

void AfxClassInit(CRuntimeClass* record) {
  auto& records = Registry();
  if (std::find(records.begin(), records.end(), record) == records.end()) records.push_back(record);
}

void AfxClassTerm(CRuntimeClass* record) { std::erase(Registry(), record); }
