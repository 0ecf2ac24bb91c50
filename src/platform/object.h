// The object base: every class of the library descends from CObject and carries a class record
// through which it can be asked for its class and made by name.

#ifndef VEXEL_PLATFORM_OBJECT_H_
#define VEXEL_PLATFORM_OBJECT_H_

#include <string_view>

#include "platform/export.h"

class CArchive;
class CObject;

// The record of one class. Records have static storage and are there before anything runs; nothing
// owns them, and nobody but the registry changes them.
struct VEXEL_API CRuntimeClass {
  const char* className;
  CObject* (*createObject)();        // null for a class that cannot be made by record
  CRuntimeClass* (*getBaseClass)();  // null for CObject itself

  // The record registered after this one. The registry's own, which needs no memory that way.
  CRuntimeClass* nextRegistered = nullptr;

  // A new object of this class, owned by the caller; null when the class cannot be made.
  CObject* CreateObject() const;

  // True for the class itself and everything below it.
  bool IsDerivedFrom(const CRuntimeClass* base) const;

  // The registered record of that exact name, null when there is none.
  static CRuntimeClass* FromName(std::string_view className);

  // A new object of the registered class of that name, owned by the caller; null when unknown.
  static CObject* CreateObject(std::string_view className);
};

class VEXEL_API CObject {
 public:
  virtual ~CObject() = default;

  static CRuntimeClass* GetThisClass();
  virtual CRuntimeClass* GetRuntimeClass() const;

  // Reads or writes the object, by the direction of the archive. The base has nothing to carry.
  virtual void Serialize(CArchive& ar);

 protected:
  CObject() = default;
  CObject(const CObject&) = default;
  CObject(CObject&&) = default;
  CObject& operator=(const CObject&) = default;
  CObject& operator=(CObject&&) = default;
};

// Adds a record to, or takes it from, the registry behind CRuntimeClass::FromName. The library
// does this for its own classes when it is loaded and unloaded; a host may do so for its own,
// before it starts threads that look classes up.
VEXEL_API void AfxClassInit(CRuntimeClass* record);
VEXEL_API void AfxClassTerm(CRuntimeClass* record);

#endif  // VEXEL_PLATFORM_OBJECT_H_
