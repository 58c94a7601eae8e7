#ifndef IKOV_APP_PROPS_H
#define IKOV_APP_PROPS_H

#include "Rx/OdRxObject.h"

#include <QString>
#include <QVariant>

// The host's application properties by path, such as
// "Vars/UEPathTracerProduction" ("kov.IAppProps").
class IkovAppProps : public OdRxObject {
public:
  static const OdChar* serviceId() { return L"kov.IAppProps"; }

  virtual QVariant property(const QString& path, const QVariant& defaultValue = QVariant()) const = 0;
  virtual void setProperty(const QString& path, const QVariant& value) = 0;
};

#endif
