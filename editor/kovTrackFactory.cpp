#include "editor/kovTrackFactory.h"

#include "animation/kovKeyframeValues.h"
#include "animation/kovOdDbEx.h"
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"

#include "host/api/IkovApplication.h"

#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbObjectIterator.h"

namespace {

const double kDefaultLongitude = 0.0;
const double kDefaultLatitude = 51.48;
const double kDefaultNorth = 0.0;

QVariant hostSetting(const char* key, const QVariant& defaultValue)
{
  IkovApplication* app = kovApp();
  return app ? app->setting(QLatin1String(key), defaultValue) : defaultValue;
}

bool isLibraryBlock(const QString& name)
{
  return name.contains(QLatin1String("xblock"), Qt::CaseInsensitive);
}

QString blockName(const OdDbObjectId& block)
{
  OdDbObjectPtr object = block.openObject(OdDb::kForRead);
  const OdDbBlockTableRecordPtr record = OdDbBlockTableRecord::cast(object.get());
  return record.isNull() ? QString() : odToQString(record->getName());
}

// Where an entity stands: its block position, else the middle of its extents.
OdGePoint3d placeOf(const OdDbObjectId& id)
{
  OdDbObjectPtr object = id.openObject(OdDb::kForRead);
  if (const OdDbBlockReferencePtr reference = OdDbBlockReference::cast(object.get()); !reference.isNull())
    return reference->position();
  const OdDbEntityPtr entity = OdDbEntity::cast(object.get());
  OdGeExtents3d extents;
  if (entity.isNull() || entity->getGeomExtents(extents) != eOk || !extents.isValidExtents())
    return OdGePoint3d::kOrigin;
  return extents.minPoint() + (extents.maxPoint() - extents.minPoint()) * 0.5;
}

// A path by points that starts where the subject stands, so that the subject
// stays in place until the user moves it.
void addStandingPath(kovAnimationTrack& track, const OdGePoint3d& place)
{
  track.addElement();
  track.elementAt(track.numElements() - 1).setValue(0, QVariantList { place.x, place.y, place.z });
}

void addParameter(kovAnimationTrack& track, const QString& name, double value)
{
  track.addElement();
  kovAnimationItem& item = track.elementAt(track.numElements() - 1);
  kovAnimationItem::setSpecialCustomParamType(item, name);
  item.setValue(0, std::max(item.minValue(), std::min(value, item.maxValue())));
}

} // namespace

const char* const kovTrackFactory::kLongitudeSetting = "Site/Longitude";
const char* const kovTrackFactory::kLatitudeSetting = "Site/Latitude";
const char* const kovTrackFactory::kNorthSetting = "Site/North";

kovAnimationTrackPtr kovTrackFactory::camera(OdDbDatabase* db, const QString& name)
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityUniqueName(db, QStringLiteral("Camera"));
  track->setName(name);
  // Both items are added first: adding moves the items.
  track->addElement();
  track->addElement();
  kovAnimationItem& path = track->elementAt(0);
  path.setAnimationType(kovAnimationItem::LocationBySpline, OdGePoint3d::kOrigin);
  path.setFaceDirection(true);
  kovAnimationItem& angles = track->elementAt(1);
  angles.setAnimationType(kovAnimationItem::RotationByAngles, OdGePoint3d::kOrigin);
  angles.setValue(path.values().firstKey(), kovKeyframeValues::defaultValue(angles));
  angles.setValue(path.values().lastKey(), kovKeyframeValues::defaultValue(angles));
  return track;
}

kovAnimationTrackPtr kovTrackFactory::entity(const OdDbObjectId& entity, const QString& name)
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityId(entity);
  track->setName(name);
  addStandingPath(*track, placeOf(entity));
  return track;
}

// Its "Time" keyframes move the sun through the day.
kovAnimationTrackPtr kovTrackFactory::environment(OdDbDatabase* db, const QString& name)
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityUniqueName(db, QStringLiteral("Environment"));
  track->setName(name);
  addParameter(*track, QStringLiteral("Longitude"), hostSetting(kLongitudeSetting, kDefaultLongitude).toDouble());
  addParameter(*track, QStringLiteral("Latitude"), hostSetting(kLatitudeSetting, kDefaultLatitude).toDouble());
  addParameter(*track, QStringLiteral("North"), hostSetting(kNorthSetting, kDefaultNorth).toDouble());
  addParameter(*track, QStringLiteral("Time"), kStartHour);
  return track;
}

kovAnimationTrackPtr kovTrackFactory::spawnedObject(OdDbDatabase* db, const QString& block)
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityUniqueName(db, block);
  track->setName(block);
  addStandingPath(*track, OdGePoint3d::kOrigin);
  return track;
}

kovAnimationTrackPtr kovTrackFactory::placedObject(const OdDbObjectId& reference, const QString& name)
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityId(reference);
  OdDbObjectPtr object = reference.openObject(OdDb::kForRead);
  const OdDbBlockReferencePtr placed = OdDbBlockReference::cast(object.get());
  track->setName(placed.isNull() ? name : blockName(placed->blockTableRecord()));
  addStandingPath(*track, placeOf(reference));
  return track;
}

QStringList kovTrackFactory::libraryBlocks(OdDbDatabase* db)
{
  if (const kovOdDbEx* library = kovOdDbEx::service())
    return library->libraryBlockNames(db);
  QStringList names;
  OdDbObjectPtr table = db->getBlockTableId().openObject(OdDb::kForRead);
  const OdDbBlockTablePtr blocks = OdDbBlockTable::cast(table.get());
  for (OdDbSymbolTableIteratorPtr it = blocks.isNull() ? OdDbSymbolTableIteratorPtr() : blocks->newIterator();
       !it.isNull() && !it->done(); it->step()) {
    const QString name = blockName(it->getRecordId());
    if (isLibraryBlock(name))
      names << name;
  }
  names.sort(Qt::CaseInsensitive);
  return names;
}

QList<QPair<QString, OdDbObjectId>> kovTrackFactory::placedObjects(OdDbDatabase* db)
{
  QList<QPair<QString, OdDbObjectId>> placed;
  OdDbObjectPtr space = db->getModelSpaceId().openObject(OdDb::kForRead);
  const OdDbBlockTableRecordPtr modelSpace = OdDbBlockTableRecord::cast(space.get());
  for (OdDbObjectIteratorPtr it = modelSpace.isNull() ? OdDbObjectIteratorPtr() : modelSpace->newIterator();
       !it.isNull() && !it->done(); it->step()) {
    OdDbObjectPtr object = it->objectId().openObject(OdDb::kForRead);
    const OdDbBlockReferencePtr reference = OdDbBlockReference::cast(object.get());
    if (reference.isNull() || !kovDbTempBlockReference::cast(object.get()).isNull())
      continue;
    const QString name = blockName(reference->blockTableRecord());
    if (isLibraryBlock(name))
      placed << qMakePair(name + QStringLiteral(" (") + odToQString(it->objectId().getHandle().ascii())
                              + QLatin1Char(')'),
                          it->objectId());
  }
  return placed;
}

void kovTrackFactory::add(kovDbAnimation* animation, const kovAnimationTrackPtr& track)
{
  animation->editTracks().push_back(track);
  animation->connetTrackSignals(track.get());
  animation->makeTrackNameUnique(track.get());
}
