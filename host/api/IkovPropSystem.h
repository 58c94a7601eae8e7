#ifndef IKOV_PROP_SYSTEM_H
#define IKOV_PROP_SYSTEM_H

#include "Db/OdDbObjectId.h"
#include "Rx/OdRxObject.h"

// The host's property palette ("kov.IPropSystem").
class IkovPropSystem : public OdRxObject {
public:
  static const OdChar* serviceId() { return L"kov.IPropSystem"; }

  // Shows the object's properties in the palette.
  virtual void showProperties(const OdDbObjectId& id) = 0;
  // Reads the shown object's values again.
  virtual void refreshProperties() = 0;
};

#endif
