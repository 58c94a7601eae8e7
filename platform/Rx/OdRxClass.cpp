#include "Rx/OdRxClass.h"

#include "Rx/OdError.h"
#include "Rx/OdRxDictionary.h"

OdRxClass::OdRxClass(const OdString& name, OdRxClass* parent, OdPseudoConstructorType constructor,
                     int dwgVersion, int maintVersion, int proxyFlags, const OdString& dxfName,
                     const OdString& appName, int customFlags)
  : m_name(name)
  , m_parent(parent)
  , m_constructor(constructor)
  , m_dwgVersion(dwgVersion)
  , m_maintVersion(maintVersion)
  , m_proxyFlags(proxyFlags)
  , m_dxfName(dxfName)
  , m_appName(appName)
  , m_customFlags(customFlags)
{
}

OdRxClass* OdRxClass::desc()
{
  static OdRxClass* cls = [] {
    auto* c = new OdRxClass(OdString(L"OdRxClass"), OdRxObject::desc(), nullptr, 0, 0, 0,
                            OdString::kEmpty, OdString::kEmpty, 0);
    c->addRef();
    return c;
  }();
  return cls;
}

OdRxClass* OdRxClass::isA() const
{
  return desc();
}

OdRxObject* OdRxClass::queryX(const OdRxClass* protocolClass) const
{
  return odQueryXImpl<OdRxClass, OdRxObject>(this, protocolClass);
}

OdSmartPtr<OdRxClass> OdRxClass::cast(const OdRxObject* object)
{
  if (!object)
    return OdSmartPtr<OdRxClass>();
  return OdSmartPtr<OdRxClass>(static_cast<OdRxClass*>(object->queryX(desc())), kOdRxObjAttach);
}

int OdRxClass::getClassVersion(int* maintVersion) const
{
  if (maintVersion)
    *maintVersion = m_maintVersion;
  return m_dwgVersion;
}

bool OdRxClass::isDerivedFrom(const OdRxClass* other) const
{
  for (const OdRxClass* cls = this; cls; cls = cls->m_parent) {
    if (cls == other)
      return true;
  }
  return false;
}

OdRxObjectPtr OdRxClass::create() const
{
  return m_constructor ? m_constructor() : OdRxObjectPtr();
}

namespace {

void registerBuiltIn(OdRxDictionary* dictionary, OdRxClass* cls)
{
  dictionary->putAt(cls->name(), cls);
}

} // namespace

OdRxDictionary* odrxClassDictionary()
{
  static OdRxDictionary* dictionary = [] {
    OdRxDictionaryPtr d = OdRxDictionary::createObject();
    registerBuiltIn(d.get(), OdRxObject::desc());
    registerBuiltIn(d.get(), OdRxClass::desc());
    registerBuiltIn(d.get(), OdRxDictionary::desc());
    odrxSysRegistry()->putAt(OdString(L"ClassDictionary"), d.get());
    return d.get();
  }();
  return dictionary;
}

OdRxClass* newOdRxClass(const OdString& name, OdRxClass* parent, OdPseudoConstructorType constructor,
                        int dwgVersion, int maintVersion, int proxyFlags, const OdString& dxfName,
                        const OdString& appName, int customFlags)
{
  if (name.isEmpty())
    throw OdError(eInvalidInput, OdString(L"A class needs a name"));
  OdRxDictionary* dictionary = odrxClassDictionary();
  if (dictionary->has(name))
    throw OdError(eDuplicateKey, OdString(L"Class ") + name + L" is already registered");
  if (!parent)
    throw OdError(eNotInitializedYet, OdString(L"The parent class of ") + name + L" is not registered");
  OdRxClassPtr cls(new OdRxClass(name, parent, constructor, dwgVersion, maintVersion, proxyFlags,
                                 dxfName, appName, customFlags));
  dictionary->putAt(name, cls.get());
  return cls.get();
}

void deleteOdRxClass(OdRxClass* cls)
{
  OdRxDictionary* dictionary = odrxClassDictionary();
  if (!cls || dictionary->getAt(cls->name()).get() != cls)
    throw OdError(eKeyNotFound, OdString(L"Class ") + (cls ? cls->name() : OdString(L"(null)"))
                                    + L" is not registered");
  dictionary->remove(cls->name());
}

OdRxObjectPtr odrxCreateObject(const OdString& className)
{
  OdRxClassPtr cls = OdRxClass::cast(odrxClassDictionary()->getAt(className).get());
  if (cls.isNull())
    throw OdError(eKeyNotFound, OdString(L"Unknown class ") + className);
  return cls->create();
}
