#include "Rx/OdRxModule.h"

OdRxClass* OdRxModule::desc()
{
  static OdRxClass* cls = [] {
    auto* c = new OdRxClass(OdString(L"OdRxModule"), OdRxObject::desc(), nullptr, 0, 0, 0,
                            OdString::kEmpty, OdString::kEmpty, 0);
    c->addRef();
    return c;
  }();
  return cls;
}

OdRxClass* OdRxModule::isA() const
{
  return desc();
}

OdRxObject* OdRxModule::queryX(const OdRxClass* protocolClass) const
{
  return odQueryXImpl<OdRxModule, OdRxObject>(this, protocolClass);
}

OdSmartPtr<OdRxModule> OdRxModule::cast(const OdRxObject* object)
{
  if (!object)
    return OdSmartPtr<OdRxModule>();
  return OdSmartPtr<OdRxModule>(static_cast<OdRxModule*>(object->queryX(desc())), kOdRxObjAttach);
}

OdString OdRxModule::moduleName() const
{
  return OdString();
}

void* OdRxModule::sysData() const
{
  return nullptr;
}

void OdRxModule::deleteModule()
{
  delete this;
}
