#ifndef OD_RX_CLASS_H
#define OD_RX_CLASS_H

#include "Rx/OdRxObject.h"
#include "Rx/OdSmartPtr.h"
#include "Rx/OdString.h"

class OdRxDictionary;

typedef OdRxObjectPtr (*OdPseudoConstructorType)();

// Run-time description of a class: its names, parent, filing versions and the
// function that creates its objects. Registered by name in the class
// dictionary (odrxClassDictionary).
class OdRxClass : public OdRxObject {
public:
  static OdRxClass* desc();
  OdRxClass* isA() const override;
  OdRxObject* queryX(const OdRxClass* protocolClass) const override;
  static OdSmartPtr<OdRxClass> cast(const OdRxObject* object);

  OdRxClass(const OdString& name, OdRxClass* parent, OdPseudoConstructorType constructor,
            int dwgVersion, int maintVersion, int proxyFlags, const OdString& dxfName,
            const OdString& appName, int customFlags);

  const OdString& name() const { return m_name; }
  const OdString& dxfName() const { return m_dxfName; }
  const OdString& appName() const { return m_appName; }
  OdRxClass* myParent() const { return m_parent; }
  int proxyFlags() const { return m_proxyFlags; }
  int customFlags() const { return m_customFlags; }
  // The filing version the class was registered with; maintVersion is optional.
  int getClassVersion(int* maintVersion = nullptr) const;
  OdPseudoConstructorType constructor() const { return m_constructor; }

  bool isDerivedFrom(const OdRxClass* other) const;
  // A new object of this class, or null for an abstract class.
  OdRxObjectPtr create() const;

private:
  OdString m_name;
  OdRxClass* m_parent;
  OdPseudoConstructorType m_constructor;
  int m_dwgVersion;
  int m_maintVersion;
  int m_proxyFlags;
  OdString m_dxfName;
  OdString m_appName;
  int m_customFlags;
};

typedef OdSmartPtr<OdRxClass> OdRxClassPtr;

// The dictionary of registered classes, by class name.
OdRxDictionary* odrxClassDictionary();

// Registers a class; raises OdError(eDuplicateKey) when the name is taken and
// OdError(eNotInitializedYet) when the parent is not registered.
OdRxClass* newOdRxClass(const OdString& name, OdRxClass* parent, OdPseudoConstructorType constructor = nullptr,
                        int dwgVersion = 0, int maintVersion = 0, int proxyFlags = 0,
                        const OdString& dxfName = OdString::kEmpty, const OdString& appName = OdString::kEmpty,
                        int customFlags = 0);
// Unregisters a class; raises OdError(eKeyNotFound) when it is not registered.
void deleteOdRxClass(OdRxClass* cls);

// Creates an object of a registered class by name; raises OdError(eKeyNotFound)
// for an unknown name.
OdRxObjectPtr odrxCreateObject(const OdString& className);

// Implementation of queryX for a class registered with the macros below.
template <class Class, class Parent>
OdRxObject* odQueryXImpl(const Class* self, const OdRxClass* protocolClass)
{
  if (!protocolClass)
    return nullptr;
  if (protocolClass == Class::desc()) {
    Class* object = const_cast<Class*>(self);
    object->addRef();
    return object;
  }
  return self->Parent::queryX(protocolClass);
}

// Declares the run-time class members of a class derived from OdRxObject.
#define ODRX_DECLARE_MEMBERS(ClassName)                                                    \
public:                                                                                    \
  static OdSmartPtr<ClassName> cast(const OdRxObject* object)                              \
  {                                                                                        \
    if (!object)                                                                           \
      return OdSmartPtr<ClassName>();                                                      \
    return OdSmartPtr<ClassName>(static_cast<ClassName*>(object->queryX(ClassName::desc())), \
                                 kOdRxObjAttach);                                          \
  }                                                                                        \
  static OdRxClass* g_pDesc;                                                               \
  static OdRxClass* desc();                                                                \
  OdRxClass* isA() const override;                                                         \
  OdRxObject* queryX(const OdRxClass* protocolClass) const override;                       \
  static OdRxObjectPtr pseudoConstructor();                                                \
  static OdSmartPtr<ClassName> createObject();                                             \
  static void rxInit();                                                                    \
  static void rxUninit()

#define ODDB_DECLARE_MEMBERS(ClassName) ODRX_DECLARE_MEMBERS(ClassName)

// Creates a new object of a class for its pseudo-constructor.
#define RXIMPL_CONSTR(ClassName) OdRxObjectPtr(static_cast<OdRxObject*>(new ClassName))
#define DBOBJECT_CONSTR(ClassName) RXIMPL_CONSTR(ClassName)

#define ODRX_DEFINE_PSEUDOCONSTRUCTOR(ClassName, DOCREATE) \
  OdRxObjectPtr ClassName::pseudoConstructor() { return DOCREATE(ClassName); }

// Defines the members declared by ODRX_DECLARE_MEMBERS except the
// pseudo-constructor.
#define ODRX_DEFINE_MEMBERS2(ClassName, ParentClass, pseudoConsFn, dwgVer, maintVer, nProxyFlags, \
                             szDWGClassName, szDxfName, szAppName, nCustomFlags)                  \
  OdRxClass* ClassName::g_pDesc = nullptr;                                                       \
  OdRxClass* ClassName::desc() { return g_pDesc; }                                               \
  OdRxClass* ClassName::isA() const { return g_pDesc; }                                          \
  OdRxObject* ClassName::queryX(const OdRxClass* protocolClass) const                            \
  {                                                                                              \
    return odQueryXImpl<ClassName, ParentClass>(this, protocolClass);                            \
  }                                                                                              \
  OdSmartPtr<ClassName> ClassName::createObject()                                                \
  {                                                                                              \
    if (!g_pDesc)                                                                                \
      throw OdError(eNotInitializedYet, OdString(L"Class ") + szDWGClassName                    \
                                            + L" is not registered");                            \
    return OdSmartPtr<ClassName>(g_pDesc->create());                                             \
  }                                                                                              \
  void ClassName::rxInit()                                                                       \
  {                                                                                              \
    if (g_pDesc)                                                                                 \
      throw OdError(eDuplicateKey, OdString(L"Class ") + szDWGClassName                         \
                                       + L" is already registered");                             \
    g_pDesc = ::newOdRxClass(szDWGClassName, ParentClass::desc(), pseudoConsFn, dwgVer, maintVer, \
                             nProxyFlags, szDxfName, szAppName, nCustomFlags);                   \
  }                                                                                              \
  void ClassName::rxUninit()                                                                     \
  {                                                                                              \
    if (!g_pDesc)                                                                                \
      throw OdError(eKeyNotFound, OdString(L"Class ") + szDWGClassName + L" is not registered"); \
    ::deleteOdRxClass(g_pDesc);                                                                  \
    g_pDesc = nullptr;                                                                           \
  }

#define ODRX_DEFINE_MEMBERS_EX(ClassName, ParentClass, DOCREATE, dwgVer, maintVer, nProxyFlags,    \
                               szDWGClassName, szDxfName, szAppName, nCustomFlags)                \
  ODRX_DEFINE_MEMBERS2(ClassName, ParentClass, ClassName::pseudoConstructor, dwgVer, maintVer,     \
                       nProxyFlags, szDWGClassName, szDxfName, szAppName, nCustomFlags)            \
  ODRX_DEFINE_PSEUDOCONSTRUCTOR(ClassName, DOCREATE)

// A class whose objects are created by its pseudo-constructor.
#define ODRX_CONS_DEFINE_MEMBERS(ClassName, ParentClass, DOCREATE)                            \
  ODRX_DEFINE_MEMBERS_EX(ClassName, ParentClass, DOCREATE, 0, 0, 0, OdString(#ClassName), OdString::kEmpty, \
                         OdString::kEmpty, 0)

#define ODRX_NULL_CONSTR(ClassName) OdRxObjectPtr()

// An abstract class: registered, but create() gives null.
#define ODRX_NO_CONS_DEFINE_MEMBERS(ClassName, ParentClass) \
  ODRX_CONS_DEFINE_MEMBERS(ClassName, ParentClass, ODRX_NULL_CONSTR)

#endif
