#ifndef KOV_HOST_PHYSICS_RENDER_H
#define KOV_HOST_PHYSICS_RENDER_H

#include "host/api/IkovPhysicsRender.h"

class kovHostViewSystem;

// The path tracer as a service: it draws the active viewport's camera in the
// view system's offscreen view, at the target size and in the rendered style,
// whatever style the viewport itself shows, so that production frames come
// out at their own size while the user's viewport keeps its own.
class kovHostPhysicsRender : public IkovPhysicsRender {
public:
  explicit kovHostPhysicsRender(kovHostViewSystem& views) : m_views(views) {}

  void setTarget(const QSize& size, int maxPasses) override;
  QSize targetSize() const { return m_size; }
  int targetPasses() const { return m_maxPasses; }

  int passesDone(OdDbDatabase* db) override;
  bool frameFinished(OdDbDatabase* db) override;
  bool saveFrame(OdDbDatabase* db, const QString& path, QString& error) override;

private:
  kovHostViewSystem& m_views;
  QSize m_size { 1280, 720 };
  int m_maxPasses = 64;
};

#endif
