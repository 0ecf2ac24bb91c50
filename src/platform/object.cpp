#include "platform/object.h"

#include <utility>

namespace {

// The library registers its classes before main begins, where nobody could catch an exception.
constinit CRuntimeClass* firstRegistered = nullptr;

// The link that leads to the first record of which `isIt` is true, or the empty one at the end.
template <typename IsIt>
CRuntimeClass** LinkTo(IsIt isIt) {
  CRuntimeClass** link = &firstRegistered;
  while (*link != nullptr && !isIt(**link)) link = &(*link)->nextRegistered;
  return link;
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
  return *LinkTo([=](const CRuntimeClass& record) { return record.className == className; });
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
  CRuntimeClass** const link = LinkTo([=](const CRuntimeClass& other) { return &other == record; });
  if (*link == nullptr) *link = record;
}

void AfxClassTerm(CRuntimeClass* record) {
  CRuntimeClass** const link = LinkTo([=](const CRuntimeClass& other) { return &other == record; });
  if (*link != nullptr) *link = std::exchange(record->nextRegistered, nullptr);
}
