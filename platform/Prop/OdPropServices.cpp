#include "Prop/OdPropServices.h"

#include "Rx/OdRxSelfRegistering.h"
#include "Rx/OdRxDictionary.h"

ODRX_SELF_REGISTERING_MEMBERS(OdPropServices, OdRxObject, RXIMPL_CONSTR)

OdResult OdPropServices::registerXmlProp(const OdString& className, OdPropBaseCreateFn createFn,
                                         const OdRxClass* pClass)
{
  if (className.isEmpty())
    return eInvalidInput;
  if (!createFn)
    return eNullPtr;
  const OdString rxClassName = pClass ? pClass->name() : className;
  if (m_creators.count(className) || creatorForRxClass(rxClassName))
    return eDuplicateKey;
  m_creators.emplace(className, Creator { createFn, rxClassName });
  return eOk;
}

OdResult OdPropServices::unregisterXmlProp(const OdString& className)
{
  return m_creators.erase(className) ? eOk : eKeyNotFound;
}

const OdPropServices::Creator* OdPropServices::creatorForRxClass(const OdString& rxClassName) const
{
  for (const auto& entry : m_creators) {
    if (entry.second.rxClassName == rxClassName)
      return &entry.second;
  }
  return nullptr;
}

OdPropBasePtr OdPropServices::createPropForClass(const OdString& className) const
{
  const auto it = m_creators.find(className);
  return it == m_creators.end() ? OdPropBasePtr() : it->second.create();
}

OdPropBasePtr OdPropServices::createPropForObject(const OdRxObject* object) const
{
  for (const OdRxClass* cls = object ? object->isA() : nullptr; cls; cls = cls->myParent()) {
    if (const Creator* creator = creatorForRxClass(cls->name()))
      return creator->create();
  }
  return OdPropBasePtr();
}

OdPropServicesPtr odpropServices()
{
  const OdString key(L"OdPropServices");
  OdPropServicesPtr services = OdPropServices::cast(odrxSysRegistry()->getAt(key).get());
  if (services.isNull()) {
    services = OdPropServices::createObject();
    odrxSysRegistry()->putAt(key, services.get());
  }
  return services;
}
