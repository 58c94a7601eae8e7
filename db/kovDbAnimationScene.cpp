// The scene around playback: saving and restoring viewports, named views, and
// looking through a camera track.
#include "db/kovDbAnimation.h"

#include "host/api/IkovApplication.h"
#include "host/api/IkovViewSystem.h"
#include "host/api/kovHostService.h"

#include "Db/OdDbViewTableRecord.h"

#include <QMap>

#include <cmath>

namespace {

const double kRadiansToDegrees = 180.0 / 3.14159265358979323846;

struct SavedScene {
  kovViewCamera camera;
};

QMap<OdDbObjectId, QMap<int, SavedScene>>& savedScenes()
{
  static QMap<OdDbObjectId, QMap<int, SavedScene>> scenes;
  return scenes;
}

} // namespace

bool kovDbAnimation::sceneHasSavedState(const OdDbObjectId& animationId, int viewport)
{
  const auto animation = savedScenes().constFind(animationId);
  return animation != savedScenes().cend() && animation->contains(viewport);
}

void kovDbAnimation::saveSceneState(const OdDbObjectId& animationId, int viewport, const kovCameraCut& cut)
{
  SavedScene scene;
  if (const IkovViewSystem* views = kovHostService<IkovViewSystem>())
    scene.camera = views->viewCamera(viewport);
  savedScenes()[animationId][viewport] = scene;

  if (IkovApplication* app = kovApp()) {
    const QString prefix = cut.stillImage ? QStringLiteral("ImageProduction/") : QStringLiteral("AnimationProduction/");
    app->setSetting(prefix + QStringLiteral("ImageWidth"), cut.imageWidth);
    app->setSetting(prefix + QStringLiteral("ImageHeight"), cut.imageHeight);
    app->setSetting(prefix + QStringLiteral("MaxIterations"), cut.maxIterations);
    app->setSetting(prefix + QStringLiteral("EnablePathTracing"), cut.pathTracing);
  }
}

void kovDbAnimation::restoreSceneState(const OdDbObjectId& animationId, int viewport)
{
  auto animation = savedScenes().find(animationId);
  if (animation == savedScenes().end() || !animation->contains(viewport))
    return;
  const SavedScene scene = animation->take(viewport);
  if (animation->isEmpty())
    savedScenes().erase(animation);
  if (IkovViewSystem* views = kovHostService<IkovViewSystem>()) {
    views->setViewCamera(viewport, scene.camera);
    views->refresh(animationId);
  }
}

void kovDbAnimation::setNamedView(const kovCameraCut& cut) const
{
  IkovViewSystem* views = kovHostService<IkovViewSystem>();
  OdDbObjectPtr object = cut.viewId.openObject(OdDb::kForRead);
  OdDbViewTableRecordPtr view = OdDbViewTableRecord::cast(object.get());
  if (!views || view.isNull())
    return;
  kovViewCamera camera;
  camera.eye = view->eyePoint();
  camera.target = view->target();
  camera.up = view->upVector();
  camera.fieldOfView = view->fieldOfView() * kRadiansToDegrees;
  views->setViewCamera(views->activeViewport(database()), camera);
}

// Depth of field: the track's "Depth Of Field" value (or "DofLensRadius") is
// the focal region and switches the effect on when above zero ("DofEnabled"
// switches it explicitly); "Focus Distance" (or "DofFocusDistance") is the
// focal distance. Values the track does not animate keep the host's settings.
void kovDbAnimation::updateCurrentView(const kovAnimationTrack* track) const
{
  assertReadEnabled();
  IkovViewSystem* views = kovHostService<IkovViewSystem>();
  if (!track || !views)
    return;
  const int viewport = views->activeViewport(database());
  const int ms = std::max(m_currentPositionMs, 0);
  const OdGeMatrix3d placement = track->computeTransformAtMillisecond(ms);

  kovViewCamera camera = views->viewCamera(viewport);
  camera.eye = placement.getCsOrigin();
  OdGeVector3d forward = placement.getCsXAxis().normal();
  if (forward.isZeroLength())
    forward = OdGeVector3d::kXAxis;
  OdGeVector3d up = placement.getCsZAxis().normal();
  if (up.isZeroLength() || up.isParallelTo(forward))
    up = OdGeVector3d::kZAxis;
  camera.target = camera.eye + forward;
  camera.up = up;
  camera.fieldOfView = track->computeValueAtMillisecond(QStringLiteral("Fov"), ms, camera.fieldOfView);
  views->setViewCamera(viewport, camera);

  IkovApplication* app = kovApp();
  if (!app)
    return;
  const QString enabledKey = QStringLiteral("Camera/DepthOfFieldEnaled");
  const QString distanceKey = QStringLiteral("Camera/DepthOfFieldFocalDistance");
  const QString regionKey = QStringLiteral("Camera/DepthOfFieldFocalRegion");
  const double region = track->computeValueAtMillisecond(
      QStringLiteral("Depth Of Field"), ms,
      track->computeValueAtMillisecond(QStringLiteral("DofLensRadius"), ms,
                                       app->setting(regionKey, 0.0).toDouble()));
  const double distance = track->computeValueAtMillisecond(
      QStringLiteral("Focus Distance"), ms,
      track->computeValueAtMillisecond(QStringLiteral("DofFocusDistance"), ms,
                                       app->setting(distanceKey, 0.0).toDouble()));
  const double enabled = track->computeValueAtMillisecond(QStringLiteral("DofEnabled"), ms, region > 0.0 ? 1.0 : 0.0);
  app->setSetting(enabledKey, enabled != 0.0);
  app->setSetting(distanceKey, distance);
  app->setSetting(regionKey, region);
}
