#ifndef OD_RX_DICTIONARY_H
#define OD_RX_DICTIONARY_H

#include "Rx/OdRxClass.h"

#include <map>
#include <vector>

// A dictionary of objects by name: the class dictionary and the system
// registry of services are both of this kind.
class OdRxDictionary : public OdRxObject {
public:
  static OdRxClass* desc();
  OdRxClass* isA() const override;
  OdRxObject* queryX(const OdRxClass* protocolClass) const override;
  static OdSmartPtr<OdRxDictionary> cast(const OdRxObject* object);
  static OdSmartPtr<OdRxDictionary> createObject();

  // The object under key, or null.
  OdRxObjectPtr getAt(const OdString& key) const;
  // Stores object under key and returns what was there before (or null).
  OdRxObjectPtr putAt(const OdString& key, OdRxObject* object);
  // Removes key and returns what was there (or null).
  OdRxObjectPtr remove(const OdString& key);
  bool has(const OdString& key) const;
  OdUInt32 numEntries() const { return static_cast<OdUInt32>(m_items.size()); }
  // The keys in ascending order.
  std::vector<OdString> keys() const;

private:
  std::map<OdString, OdRxObjectPtr> m_items;
};

typedef OdSmartPtr<OdRxDictionary> OdRxDictionaryPtr;

// The process-wide registry of services, looked up by id string.
OdRxDictionary* odrxSysRegistry();

#endif
