#include "Prop/OdPropServices.h"

#include "Rx/OdRxSelfRegistering.h"
#include "Rx/OdRxDictionary.h"

ODRX_SELF_REGISTERING_MEMBERS(OdPropServices, OdRxObject, RXIMPL_CONSTR)

OdResult OdPropServices::registerXmlProp(const OdString& className, OdPropBaseCreateFn createFn)
{
  if (className.isEmpty())
    return eInvalidInput;
  if (!createFn)
    return eNullPtr;
  if (!m_creators.emplace(className, createFn).second)
    return eDuplicateKey;
  return eOk;
}

OdResult OdPropServices::unregisterXmlProp(const OdString& className)
{
  return m_creators.erase(className) ? eOk : eKeyNotFound;
}

OdPropBasePtr OdPropServices::createPropForClass(const OdString& className) const
{
  const auto it = m_creators.find(className);
  return it == m_creators.end() ? OdPropBasePtr() : it->second();
}

OdPropBasePtr OdPropServices::createPropForObject(const OdRxObject* object) const
{
  for (const OdRxClass* cls = object ? object->isA() : nullptr; cls; cls = cls->myParent()) {
    const auto it = m_creators.find(cls->name());
    if (it != m_creators.end())
      return it->second();
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
