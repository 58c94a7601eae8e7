#ifndef OD_PROP_SERVICES_H
#define OD_PROP_SERVICES_H

#include "Prop/OdPropBase.h"
#include "Rx/OdResult.h"

#include <map>

// The registry of property providers by class name. One per process, kept in
// the system registry under "OdPropServices" (see odpropServices()). A module
// registers its providers when it loads and unregisters them when it unloads.
class OdPropServices : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdPropServices);

public:
  // Registers the provider of a class's properties: eInvalidInput for an
  // empty class name, eNullPtr for a null function, eDuplicateKey when the
  // class has one already.
  OdResult registerXmlProp(const OdString& className, OdPropBaseCreateFn createFn);
  // eKeyNotFound when the class has no provider.
  OdResult unregisterXmlProp(const OdString& className);
  bool hasPropForClass(const OdString& className) const { return m_creators.count(className) != 0; }

  // A new provider for the class of that name (exactly), or null.
  OdPropBasePtr createPropForClass(const OdString& className) const;
  // A new provider for the object's class or, failing that, for the nearest
  // of its parent classes that has one; null when none has.
  OdPropBasePtr createPropForObject(const OdRxObject* object) const;

private:
  OdPropServices() = default;

  std::map<OdString, OdPropBaseCreateFn> m_creators;
};

typedef OdSmartPtr<OdPropServices> OdPropServicesPtr;

// The process's property services, created and registered on first use.
OdPropServicesPtr odpropServices();

#endif
