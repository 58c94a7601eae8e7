// The scene around playback: saving and restoring viewports, named views, and
// looking through a camera track.
#include "db/kovDbAnimation.h"

#include "host/api/IkovApplication.h"
#include "host/api/IkovViewSystem.h"
#include "host/api/kovHostService.h"

#include "animation/kovOdDbEx.h"

#include "Db/OdDbBlockReference.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbViewTableRecord.h"

#include <QMap>

#include <cmath>

namespace {

const double kRadiansToDegrees = 180.0 / 3.14159265358979323846;
const QString kDofEnabledKey = QStringLiteral("Camera/DepthOfFieldEnaled");
const QString kDofDistanceKey = QStringLiteral("Camera/DepthOfFieldFocalDistance");
const QString kDofRegionKey = QStringLiteral("Camera/DepthOfFieldFocalRegion");
// Blur, in radians of view, at the near and far edges of the focal region: a
// pixel or so of a picture a thousand pixels wide.
const double kEdgeBlur = 0.001;
// How far ahead of the eye a camera without a focus distance looks.
const double kDefaultSightDistance = 10.0;

QVariant hostSetting(const QString& key, const QVariant& def)
{
  const IkovApplication* app = kovApp();
  return app ? app->setting(key, def) : def;
}

bool isCamera(const kovAnimationTrackPtr& track)
{
  return !track.isNull() && track->trackTypeIdentifier() == QLatin1String("Camera");
}

// The depth of the region in focus: the track's "Depth Of Field", else the
// host's camera setting.
double focalRegion(const kovAnimationTrack& track, int ms)
{
  return track.computeValueAtMillisecond(QStringLiteral("Depth Of Field"), ms,
                                         hostSetting(kDofRegionKey, 0.0).toDouble());
}

// The view through a camera track at ms, base giving what the track leaves
// open. Depth of field: the track's "Focus Distance" (or "DofFocusDistance",
// else the host's focal distance) is where the lens focuses; the region in
// focus (focalRegion) sets the lens, the one that blurs the region's edges by
// kEdgeBlur (a thin lens of radius A focused at s blurs a point d further by
// about A d / s^2, so A = 2 kEdgeBlur s^2 / region), unless the track gives the
// radius itself ("DofLensRadius"). The effect is on when "DofEnabled" says so,
// else when there is a region, else as the host's setting has it.
kovViewCamera trackCamera(const kovAnimationTrack& track, int ms, const kovViewCamera& base)
{
  const OdGeMatrix3d placement = track.computeTransformAtMillisecond(ms);
  kovViewCamera camera = base;
  camera.eye = placement.getCsOrigin();
  OdGeVector3d forward = placement.getCsXAxis().normal();
  if (forward.isZeroLength())
    forward = OdGeVector3d::kXAxis;
  OdGeVector3d up = placement.getCsZAxis().normal();
  if (up.isZeroLength() || up.isParallelTo(forward))
    up = OdGeVector3d::kZAxis;
  camera.up = up;
  camera.fieldOfView = track.computeValueAtMillisecond(QStringLiteral("Fov"), ms, base.fieldOfView);

  const double region = focalRegion(track, ms);
  const double distance = track.computeValueAtMillisecond(
      QStringLiteral("Focus Distance"), ms,
      track.computeValueAtMillisecond(QStringLiteral("DofFocusDistance"), ms,
                                      hostSetting(kDofDistanceKey, 0.0).toDouble()));
  const bool hostEnabled = hostSetting(kDofEnabledKey, false).toBool();
  const double enabled = track.computeValueAtMillisecond(QStringLiteral("DofEnabled"), ms,
                                                         region > 0.0 || hostEnabled ? 1.0 : 0.0);
  const double sight = distance > 0.0 ? distance : kDefaultSightDistance;
  camera.target = camera.eye + forward * sight;
  camera.focusDistance = std::max(distance, 0.0);
  const double derivedRadius = region > 0.0 ? 2.0 * kEdgeBlur * sight * sight / region : 0.0;
  camera.lensRadius = std::max(track.computeValueAtMillisecond(QStringLiteral("DofLensRadius"), ms, derivedRadius), 0.0);
  camera.depthOfField = enabled != 0.0 && camera.lensRadius > 0.0;
  return camera;
}

// The value of the track's custom parameter of that name that holds at ms:
// the keyframe at or before it (on/off and text values step, they do not
// blend); null before the first keyframe or without such a parameter.
QVariant heldValue(const kovAnimationTrack& track, const QString& name, int ms, int* keyMs = nullptr)
{
  const int t = ms - track.startMillisecond();
  for (const kovAnimationItem& item : track.animationElements()) {
    if (item.animationType() != kovAnimationItem::CustomParameter
        || item.customParameterName().compare(name, Qt::CaseInsensitive) != 0)
      continue;
    auto it = item.values().upperBound(t);
    if (it == item.values().constBegin())
      return QVariant();
    --it;
    if (keyMs)
      *keyMs = track.startMillisecond() + it.key();
    return it.value();
  }
  return QVariant();
}

// An entity, object or spawned-object track's subject: what shows it (the
// stand-in block when there is one) stands as drawn at the track's first
// keyframe and moves by the track's placement since then.
void addSubject(IkovAnimatedScene::Frame& frame, const kovAnimationTrack& track, int ms, OdDbDatabase* db)
{
  const OdDbObjectId shown = track.blockId().isValid() ? track.blockId() : track.entityId();
  if (shown.isNull())
    return;
  const QVariant visible = heldValue(track, QStringLiteral("Visibility"), ms);
  if (visible.isValid() && !visible.toBool()) {
    frame.hidden.push_back(shown);
    return;
  }
  IkovAnimatedScene::Subject subject;
  subject.entity = shown;
  const int rest = track.startMillisecond() + track.firstKeyframeTime();
  const OdGeMatrix3d restPlacement = track.computeTransformAtMillisecond(rest);
  if (!restPlacement.isSingular())
    subject.transform = track.computeTransformAtMillisecond(ms) * restPlacement.inverse();

  int clipStart = 0;
  const QString clip = heldValue(track, QStringLiteral("Object Animation"), ms, &clipStart).toString();
  const kovOdDbEx* library = kovOdDbEx::service();
  if (!clip.isEmpty() && library) {
    QString subjectName = track.entityUniqueName();
    if (subjectName.isEmpty()) {
      OdDbObjectPtr object = shown.openObject(OdDb::kForRead);
      OdDbBlockReferencePtr reference = OdDbBlockReference::cast(object.get());
      OdDbObjectPtr block = reference.isNull() ? OdDbObjectPtr() : reference->blockTableRecord().openObject();
      if (OdDbBlockTableRecord* record = OdDbBlockTableRecord::cast(block.get()).get())
        subjectName = odToQString(record->getName());
    }
    subject.nodes = library->nestedTransforms(db, subjectName, clip, ms - clipStart);
  }
  if (subject.transform != OdGeMatrix3d::kIdentity || !subject.nodes.isEmpty())
    frame.subjects.push_back(subject);
}

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

void kovDbAnimation::updateCurrentView(const kovAnimationTrack* track) const
{
  assertReadEnabled();
  IkovViewSystem* views = kovHostService<IkovViewSystem>();
  if (!track || !views)
    return;
  const int viewport = views->activeViewport(database());
  const int ms = std::max(m_currentPositionMs, 0);
  const kovViewCamera camera = trackCamera(*track, ms, views->viewCamera(viewport));
  views->setViewCamera(viewport, camera);
  if (IkovApplication* app = kovApp()) {
    app->setSetting(kDofEnabledKey, camera.depthOfField);
    app->setSetting(kDofDistanceKey, camera.focusDistance);
    app->setSetting(kDofRegionKey, focalRegion(*track, ms));
  }
}

IkovAnimatedScene::Frame kovDbAnimation::sceneFrame() const
{
  assertReadEnabled();
  const int ms = std::max(m_currentPositionMs, 0);
  IkovAnimatedScene::Frame frame;
  for (const kovAnimationTrackPtr& track : m_tracks) {
    if (track.isNull())
      continue;
    const QString kind = track->trackTypeIdentifier();
    if (kind == QLatin1String("Environment")) {
      const OdGeVector3d toSun = track->computeSunPositionAtMillisecond(ms).getCsOrigin().asVector();
      if (!toSun.isZeroLength()) {
        frame.hasSun = true;
        frame.toSun = toSun.normal();
      }
      frame.sky = heldValue(*track, QStringLiteral("Sky Sequence"), ms).toString();
    } else if (kind == QLatin1String("Entity") || kind == QLatin1String("Object")
               || kind == QLatin1String("SpawnedObject")) {
      addSubject(frame, *track, ms, database());
    }
  }
  kovAnimationTrackPtr camera;
  if (m_selectedSceneCutIndex >= 0 && m_selectedSceneCutIndex < m_cuts.size())
    camera = m_cuts.at(m_selectedSceneCutIndex).track;
  if (!isCamera(camera))
    camera = selectedTrack();
  for (auto it = m_tracks.cbegin(); !isCamera(camera) && it != m_tracks.cend(); ++it)
    camera = *it;
  if (isCamera(camera)) {
    const IkovViewSystem* views = kovHostService<IkovViewSystem>();
    const kovViewCamera base = views ? views->viewCamera(views->activeViewport(database())) : kovViewCamera();
    frame.hasCamera = true;
    frame.camera = trackCamera(*camera, ms, base);
  }
  return frame;
}
