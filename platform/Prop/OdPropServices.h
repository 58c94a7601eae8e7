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
  // Registers the provider of a class's properties under className:
  // eInvalidInput for an empty name, eNullPtr for a null function,
  // eDuplicateKey when the name, or pClass, has one already. A provider whose
  // name is not the name of the run-time class it describes names that class
  // in pClass.
  OdResult registerXmlProp(const OdString& className, OdPropBaseCreateFn createFn, const OdRxClass* pClass = nullptr);
  // eKeyNotFound when the name has no provider.
  OdResult unregisterXmlProp(const OdString& className);
  bool hasPropForClass(const OdString& className) const { return m_creators.count(className) != 0; }

  // A new provider registered under that name (exactly), or null.
  OdPropBasePtr createPropForClass(const OdString& className) const;
  // A new provider for the object's class or, failing that, for the nearest
  // of its parent classes that has one; null when none has.
  OdPropBasePtr createPropForObject(const OdRxObject* object) const;

private:
  OdPropServices() = default;

  struct Creator {
    OdPropBaseCreateFn create;
    // The run-time class the provider describes.
    OdString rxClassName;
  };
  const Creator* creatorForRxClass(const OdString& rxClassName) const;

  std::map<OdString, Creator> m_creators;
};

typedef OdSmartPtr<OdPropServices> OdPropServicesPtr;

// The process's property services, created and registered on first use.
OdPropServicesPtr odpropServices();

#endif
