#ifndef IKOV_PHYSICS_RENDER_H
#define IKOV_PHYSICS_RENDER_H

#include "Rx/OdRxObject.h"

#include <QSize>
#include <QString>

class OdDbDatabase;

// The host's physically based renderer ("kov.IPhysicsRender", engine label
// "TessaRender"): a progressive path tracer that draws the active view of a
// drawing at the production size, one pass at a time, while the host runs.
class IkovPhysicsRender : public OdRxObject {
public:
  static const OdChar* serviceId() { return L"kov.IPhysicsRender"; }
  static QString label() { return QStringLiteral("TessaRender"); }

  // The size of the produced pictures and the passes that finish one. The
  // accumulated picture starts again.
  virtual void setTarget(const QSize& size, int maxPasses) = 0;
  // Passes in the picture of db's active view since anything it shows last
  // changed. Asking draws one more pass while the frame is not finished, so
  // that a caller polling it (the production loop) drives the renderer.
  virtual int passesDone(OdDbDatabase* db) = 0;
  // True once the passes reach the target's.
  virtual bool frameFinished(OdDbDatabase* db) = 0;
  // Writes the picture as it stands (PNG, JPG... by the path's extension);
  // false with the reason in error.
  virtual bool saveFrame(OdDbDatabase* db, const QString& path, QString& error) = 0;
};

#endif
