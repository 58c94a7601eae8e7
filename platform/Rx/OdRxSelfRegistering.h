#ifndef OD_RX_SELF_REGISTERING_H
#define OD_RX_SELF_REGISTERING_H

#include "Rx/OdRxClass.h"

// Defines the members ODRX_DECLARE_MEMBERS declares, for a platform service
// class that registers itself the first time anyone asks for its class
// (desc(), a cast, a query). Service classes are used by every module and by
// the host before any of them could call an initialisation function, so they
// need none. rxUninit() unregisters the class; the next desc() registers it
// again. Registration is not thread-safe: the first use happens on the main
// thread, as with every class registration.
#define ODRX_SELF_REGISTERING_MEMBERS(ClassName, ParentClass, DOCREATE)                              \
  OdRxClass* ClassName::g_pDesc = nullptr;                                                          \
  OdRxClass* ClassName::desc()                                                                      \
  {                                                                                                 \
    if (!g_pDesc)                                                                                   \
      rxInit();                                                                                     \
    return g_pDesc;                                                                                 \
  }                                                                                                 \
  OdRxClass* ClassName::isA() const { return desc(); }                                             \
  OdRxObject* ClassName::queryX(const OdRxClass* protocolClass) const                               \
  {                                                                                                 \
    return odQueryXImpl<ClassName, ParentClass>(this, protocolClass);                               \
  }                                                                                                 \
  OdRxObjectPtr ClassName::pseudoConstructor() { return DOCREATE(ClassName); }                      \
  OdSmartPtr<ClassName> ClassName::createObject() { return OdSmartPtr<ClassName>(desc()->create()); } \
  void ClassName::rxInit()                                                                          \
  {                                                                                                 \
    if (!g_pDesc)                                                                                   \
      g_pDesc = ::newOdRxClass(OdString(#ClassName), ParentClass::desc(), &ClassName::pseudoConstructor); \
  }                                                                                                 \
  void ClassName::rxUninit()                                                                        \
  {                                                                                                 \
    if (g_pDesc) {                                                                                  \
      ::deleteOdRxClass(g_pDesc);                                                                   \
      g_pDesc = nullptr;                                                                            \
    }                                                                                               \
  }

#endif
