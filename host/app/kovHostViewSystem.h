#ifndef KOV_HOST_VIEW_SYSTEM_H
#define KOV_HOST_VIEW_SYSTEM_H

#include "host/api/IkovViewSystem.h"

#include <QObject>

// The host's views: one viewport per open drawing (number 0) with its camera.
// Views that show it repaint on changed(); refresh() also says refreshed(),
// after which they draw the drawing anew.
class kovHostViewSystem : public QObject, public IkovViewSystem {
  Q_OBJECT
public:
  // The label of the host's own engine, which draws wireframes.
  static QString engineLabel() { return QStringLiteral("Wireframe"); }

  int activeViewport(OdDbDatabase* db) const override;
  kovViewCamera viewCamera(int viewport) const override;
  void setViewCamera(int viewport, const kovViewCamera& camera) override;
  QString activeRenderEngine(OdDbDatabase* db) const override;
  void refresh(const OdDbObjectId& id) override;

signals:
  void changed();
  void refreshed(const OdDbObjectId& id);

private:
  kovViewCamera m_camera;
};

#endif
