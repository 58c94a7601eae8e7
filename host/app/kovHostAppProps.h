#ifndef KOV_HOST_APP_PROPS_H
#define KOV_HOST_APP_PROPS_H

#include "host/api/IkovAppProps.h"

// Application properties, kept in the host's settings under "AppProps/".
class kovHostAppProps : public IkovAppProps {
public:
  QVariant property(const QString& path, const QVariant& defaultValue = QVariant()) const override;
  void setProperty(const QString& path, const QVariant& value) override;
};

#endif
