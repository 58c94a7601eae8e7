#include "host/app/kovHostServices.h"

#include "host/app/kovHostAppProps.h"
#include "host/app/kovHostConsole.h"
#include "host/app/kovHostEntityLibrary.h"
#include "host/app/kovHostPhysicsRender.h"
#include "host/app/kovHostPropSystem.h"
#include "host/app/kovHostSelectionSet.h"
#include "host/app/kovHostViewSystem.h"

#include "rasterservices/kovRasterServices.h"

#include "Rx/OdRxDictionary.h"

namespace {

template <class T>
T* publish(T* service)
{
  odrxSysRegistry()->putAt(OdString(T::serviceId()), service);
  return service;
}

} // namespace

kovHostServices::kovHostServices()
  : m_viewSystem(publish(new kovHostViewSystem))
  , m_console(publish(new kovHostConsole))
  , m_propSystem(publish(new kovHostPropSystem))
  , m_appProps(publish(new kovHostAppProps))
  , m_entityLibrary(publish(new kovHostEntityLibrary))
  , m_physicsRender(publish(new kovHostPhysicsRender(*m_viewSystem)))
  , m_selectionSet(publish(new kovHostSelectionSet))
{
  kovRegisterRasterServices();
}

kovHostServices::~kovHostServices()
{
  kovUnregisterRasterServices();
  for (const OdChar* id : { IkovViewSystem::serviceId(), IkovConsole::serviceId(), IkovPropSystem::serviceId(),
                            IkovAppProps::serviceId(), kovOdDbEx::serviceId(), IkovPhysicsRender::serviceId(),
                            IkovSelectionSet::serviceId() })
    odrxSysRegistry()->remove(OdString(id));
}
