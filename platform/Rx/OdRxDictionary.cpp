#include "Rx/OdRxDictionary.h"

OdRxClass* OdRxDictionary::desc()
{
  static OdRxClass* cls = [] {
    auto* c = new OdRxClass(OdString(L"OdRxDictionary"), OdRxObject::desc(), nullptr, 0, 0, 0,
                            OdString::kEmpty, OdString::kEmpty, 0);
    c->addRef();
    return c;
  }();
  return cls;
}

OdRxClass* OdRxDictionary::isA() const
{
  return desc();
}

OdRxObject* OdRxDictionary::queryX(const OdRxClass* protocolClass) const
{
  return odQueryXImpl<OdRxDictionary, OdRxObject>(this, protocolClass);
}

OdSmartPtr<OdRxDictionary> OdRxDictionary::cast(const OdRxObject* object)
{
  if (!object)
    return OdSmartPtr<OdRxDictionary>();
  return OdSmartPtr<OdRxDictionary>(static_cast<OdRxDictionary*>(object->queryX(desc())), kOdRxObjAttach);
}

OdSmartPtr<OdRxDictionary> OdRxDictionary::createObject()
{
  return OdSmartPtr<OdRxDictionary>(new OdRxDictionary);
}

OdRxObjectPtr OdRxDictionary::getAt(const OdString& key) const
{
  const auto it = m_items.find(key);
  return it == m_items.end() ? OdRxObjectPtr() : it->second;
}

OdRxObjectPtr OdRxDictionary::putAt(const OdString& key, OdRxObject* object)
{
  OdRxObjectPtr previous = getAt(key);
  m_items[key] = object;
  return previous;
}

OdRxObjectPtr OdRxDictionary::remove(const OdString& key)
{
  const auto it = m_items.find(key);
  if (it == m_items.end())
    return OdRxObjectPtr();
  OdRxObjectPtr previous = it->second;
  m_items.erase(it);
  return previous;
}

bool OdRxDictionary::has(const OdString& key) const
{
  return m_items.count(key) != 0;
}

std::vector<OdString> OdRxDictionary::keys() const
{
  std::vector<OdString> result;
  result.reserve(m_items.size());
  for (const auto& item : m_items)
    result.push_back(item.first);
  return result;
}

OdRxDictionary* odrxSysRegistry()
{
  // Deliberately never destroyed: modules may release services from their own
  // static destructors after main returns.
  static OdRxDictionary* registry = [] {
    auto* d = new OdRxDictionary;
    d->addRef();
    return d;
  }();
  return registry;
}
