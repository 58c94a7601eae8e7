#include "module/kovCameraAnimationBuilder.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"

#include <QCoreApplication>
#include <QVariantList>

namespace {

const int kKeySpacingMs = 1000;

QVariant pathValue(const OdGePoint3d& p, const OdGeVector3d& tangent)
{
  return QVariantList { p.x, p.y, p.z, tangent.x, tangent.y, tangent.z };
}

} // namespace

kovDbAnimationPtr kovCameraAnimationBuilder::build(OdDbDatabase* db, const OdDbSpline* path)
{
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  animation->setDatabaseDefaults(db);
  const QString title = QCoreApplication::translate("kovCameraAnimationBuilder", "New Camera Animation");
  animation->setName(title);
  animation->setDescription(title);

  kovAnimationTrackPtr track(new kovAnimationTrack);
  animation->editTracks().push_back(track);
  track->setEntityUniqueName(db, QStringLiteral("Camera"));
  track->setName(QCoreApplication::translate("kovCameraAnimationBuilder", "Camera Track"));
  track->addElement();
  track->addElement();
  kovAnimationItem& location = track->elementAt(0);
  kovAnimationItem& rotation = track->elementAt(1);
  location.setAnimationType(kovAnimationItem::LocationBySpline, OdGePoint3d::kOrigin);
  rotation.setAnimationType(kovAnimationItem::RotationByAngles, OdGePoint3d::kOrigin);
  location.clearValues();
  rotation.clearValues();

  OdGePoint3dArray points;
  int degree = 3;
  double fitTolerance = 0.0;
  bool tangentsExist = false;
  OdGeVector3d startTangent, endTangent;
  path->getFitData(points, degree, fitTolerance, tangentsExist, startTangent, endTangent);
  QMap<int, QVariant> values;
  for (unsigned i = 0; i < points.size(); ++i) {
    OdGeVector3d tangent;
    if (i == 0 && !startTangent.isZeroLength())
      tangent = startTangent;
    else if (i + 1 == points.size() && !endTangent.isZeroLength())
      tangent = endTangent;
    values.insert(static_cast<int>(i) * kKeySpacingMs, pathValue(points[i], tangent));
  }
  location.setValues(values);
  // A camera looks where it goes; the rotation sub-track holds angles the
  // user adds on top (its pivot stays at the origin: a pivot also moves).
  location.setFaceDirection(true);
  location.recalcKFTimesByDistance(animation.get(), track.get(), 1.0);
  if (!location.values().isEmpty()) {
    const QVariant neutral = QVariantList { 0.0, 0.0, 0.0, 0.0, 0.0, 0.0 };
    rotation.setValue(location.values().firstKey(), neutral);
    rotation.setValue(location.values().lastKey(), neutral);
  }

  animation->connetTrackSignals(track.get());
  animation->makeTrackNameUnique(track.get());
  OdDbBlockTableRecordPtr modelSpace = db->getModelSpaceId().safeOpenObject(OdDb::kForWrite);
  modelSpace->appendOdDbEntity(animation.get());
  return animation;
}

OdDbSplinePtr kovCameraAnimationBuilder::defaultPath(OdDbDatabase* db)
{
  OdDbSplinePtr spline = OdDbSpline::createObject();
  spline->setDatabaseDefaults(db);
  OdGePoint3dArray points;
  points.append(OdGePoint3d(-10.0, 0.0, 0.0));
  points.append(OdGePoint3d(0.0, 10.0, 0.0));
  points.append(OdGePoint3d(10.0, 0.0, 0.0));
  spline->setFitData(points, 3, 0.1, OdGeVector3d::kXAxis, -OdGeVector3d::kXAxis);
  spline->setType(OdDbSpline::kFitPoints);
  return spline;
}
