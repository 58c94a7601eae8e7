#ifndef KOV_HOST_PROP_SYSTEM_H
#define KOV_HOST_PROP_SYSTEM_H

#include "host/api/IkovPropSystem.h"

#include <QObject>

// The host's property palette service: remembers the object to show; the
// palette dock follows shown().
class kovHostPropSystem : public QObject, public IkovPropSystem {
  Q_OBJECT
public:
  // Forgets the shown object whenever the host's drawing changes: its id
  // dies with the drawing.
  kovHostPropSystem();

  void showProperties(const OdDbObjectId& id) override;
  void refreshProperties() override;
  const OdDbObjectId& shownObject() const { return m_shown; }

signals:
  void shown(const OdDbObjectId& id);

private:
  OdDbObjectId m_shown;
};

#endif
