#ifndef KOV_HOST_PROP_SYSTEM_H
#define KOV_HOST_PROP_SYSTEM_H

#include "host/api/IkovPropSystem.h"

#include <QObject>

#include <memory>

// The host's property palette service: remembers the object to show and
// watches it, so that the palette follows every change of it, whoever makes
// it (the palette itself, the editor, a command, undo, a drag on the
// timeline). The palette dock follows shown().
class kovHostPropSystem : public QObject, public IkovPropSystem {
  Q_OBJECT
public:
  // Forgets the shown object whenever the host's drawing changes: its id
  // dies with the drawing.
  kovHostPropSystem();
  ~kovHostPropSystem() override;

  void showProperties(const OdDbObjectId& id) override;
  void refreshProperties() override;
  const OdDbObjectId& shownObject() const { return m_shown; }

signals:
  // The object to show; the same one again whenever it was changed or
  // erased, or its values are to be read again.
  void shown(const OdDbObjectId& id);

private:
  class Watch;

  OdDbObjectId m_shown;
  std::unique_ptr<Watch> m_watch;
};

#endif
