#include "Rx/OdRxObject.h"

#include "Rx/OdRxClass.h"
#include "Rx/OdRxDictionary.h"

OdRxClass* OdRxObject::desc()
{
  // The root class is never unregistered; it lives as long as the process.
  static OdRxClass* root = [] {
    auto* cls = new OdRxClass(OdString(L"OdRxObject"), nullptr, nullptr, 0, 0, 0,
                              OdString::kEmpty, OdString::kEmpty, 0);
    cls->addRef();
    return cls;
  }();
  return root;
}

OdRxClass* OdRxObject::isA() const
{
  return desc();
}

OdRxObject* OdRxObject::queryX(const OdRxClass* protocolClass) const
{
  if (protocolClass && protocolClass == desc()) {
    OdRxObject* self = const_cast<OdRxObject*>(this);
    self->addRef();
    return self;
  }
  return nullptr;
}

bool OdRxObject::isKindOf(const OdRxClass* protocolClass) const
{
  const OdRxClass* cls = isA();
  return cls && protocolClass && cls->isDerivedFrom(protocolClass);
}

void OdRxObject::addRef()
{
  m_refs.fetch_add(1, std::memory_order_relaxed);
}

void OdRxObject::release()
{
  ODA_ASSERT(m_refs.load() > 0);
  if (m_refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
    delete this;
}

long OdRxObject::numRefs() const
{
  return m_refs.load(std::memory_order_relaxed);
}

void OdRxObject::rxInit()
{
}

void OdRxObject::rxUninit()
{
}
