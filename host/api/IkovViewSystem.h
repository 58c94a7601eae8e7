#ifndef IKOV_VIEW_SYSTEM_H
#define IKOV_VIEW_SYSTEM_H

#include "host/api/kovViewCamera.h"

#include "Db/OdDbObjectId.h"
#include "Gi/OdGiRasterImage.h"
#include "Rx/OdRxObject.h"

#include <QSize>
#include <QString>

class OdDbDatabase;

// The host's views of its drawings ("kov.IViewSystem").
class IkovViewSystem : public OdRxObject {
public:
  static const OdChar* serviceId() { return L"kov.IViewSystem"; }

  // The viewport the user works in for db; -1 when there is none.
  virtual int activeViewport(OdDbDatabase* db) const = 0;
  virtual kovViewCamera viewCamera(int viewport) const = 0;
  virtual void setViewCamera(int viewport, const kovViewCamera& camera) = 0;
  // The label of the render engine that draws db's active viewport.
  virtual QString activeRenderEngine(OdDbDatabase* db) const = 0;
  // Redraws what shows the object (all views when the id is null).
  virtual void refresh(const OdDbObjectId& id) = 0;
  // The picture of db's viewport at size, as its render engine draws it now;
  // null, with the reason in error, when there is none (a size out of range,
  // no display).
  virtual OdGiRasterImagePtr viewRaster(OdDbDatabase* db, int viewport, const QSize& size, QString& error) = 0;
};

#endif
