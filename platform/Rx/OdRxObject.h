#ifndef OD_RX_OBJECT_H
#define OD_RX_OBJECT_H

#include "Rx/OdPlatform.h"

#include <atomic>

class OdRxClass;

// Marks a smart pointer constructor that takes over an existing reference
// instead of adding one.
enum OdRxObjMod { kOdRxObjAttach };

// Base of every run-time typed, reference-counted platform object. Objects
// start with no references; the first smart pointer that holds one adds it,
// and the last release deletes the object.
class OdRxObject {
public:
  OdRxObject() = default;
  OdRxObject(const OdRxObject&) = delete;
  OdRxObject& operator=(const OdRxObject&) = delete;
  virtual ~OdRxObject() = default;

  static OdRxClass* desc();
  virtual OdRxClass* isA() const;
  // Returns this object with a reference added when it is of the given class
  // (or derived from it), else null.
  virtual OdRxObject* queryX(const OdRxClass* protocolClass) const;
  bool isKindOf(const OdRxClass* protocolClass) const;

  virtual void addRef();
  virtual void release();
  virtual long numRefs() const;

  static void rxInit();
  static void rxUninit();

private:
  std::atomic<long> m_refs { 0 };
};

#endif
