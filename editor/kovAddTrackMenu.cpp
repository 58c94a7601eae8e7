#include "editor/kovAddTrackMenu.h"

#include "animation/kovKeyframeValues.h"
#include "animation/kovOdDbEx.h"
#include "db/kovDbAnimation.h"
#include "db/kovDbTempBlockReference.h"
#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationTracksHeaderWidget.h"
#include "editor/kovHostSelection.h"

#include "host/api/IkovApplication.h"

#include "Db/OdDbBlockTable.h"
#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbObjectIterator.h"

#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

namespace {

const char* const kAdvancedSetting = "AnimationsAdvanced";
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

// The library's blocks as the host knows them, else the drawing's blocks
// named as library blocks.
QStringList libraryBlocks(OdDbDatabase* db)
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

// The references to library blocks that the user placed in model space (not
// the stand-ins that animations make), labelled by block name and handle.
QList<QPair<QString, OdDbObjectId>> placedObjects(OdDbDatabase* db)
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

const char* const kovAddTrackMenu::kLongitudeSetting = "Site/Longitude";
const char* const kovAddTrackMenu::kLatitudeSetting = "Site/Latitude";
const char* const kovAddTrackMenu::kNorthSetting = "Site/North";

kovAddTrackMenu::kovAddTrackMenu(kovAnimationEditorWidget* editor)
  : QObject(editor)
  , m_editor(editor)
{
  setObjectName(QStringLiteral("AddTrackMenu"));
  connect(editor->tracksHeader()->addTrackButton(), &QPushButton::clicked, this, &kovAddTrackMenu::showMenu);
}

QString kovAddTrackMenu::text(Kind kind)
{
  switch (kind) {
  case CameraTrack: return tr("Camera Track");
  case EntityTrack: return tr("Entity Track");
  case EnvironmentTrack: return tr("Environment Track");
  case SpawnedObjectTrack: return tr("Spawned Object Track");
  case DbObjectTrack: return tr("Db Object Track");
  }
  return QString();
}

QList<kovAddTrackMenu::Kind> kovAddTrackMenu::offeredKinds()
{
  QList<Kind> kinds { CameraTrack, EntityTrack, EnvironmentTrack };
  if (hostSetting(kAdvancedSetting, true).toBool())
    kinds << SpawnedObjectTrack << DbObjectTrack;
  return kinds;
}

void kovAddTrackMenu::showMenu()
{
  if (m_editor->animationId().isNull())
    return;
  QMenu menu(m_editor);
  menu.setObjectName(QStringLiteral("AddTrackMenu"));
  for (Kind kind : offeredKinds())
    menu.addAction(text(kind))->setData(static_cast<int>(kind));
  QPushButton* button = m_editor->tracksHeader()->addTrackButton();
  const QAction* chosen = menu.exec(button->mapToGlobal(QPoint(0, button->height())));
  if (chosen)
    addTrack(static_cast<Kind>(chosen->data().toInt()));
}

bool kovAddTrackMenu::addTrack(Kind kind)
{
  OdDbDatabase* db = m_editor->animationId().database();
  if (!db)
    return false;
  // The subject is asked for first: a refusal or a cancel leaves no edit behind.
  OdDbObjectId subject;
  QString block;
  if (kind == EntityTrack && (subject = chooseEntity()).isNull())
    return false;
  if (kind == SpawnedObjectTrack && (block = chooseLibraryBlock()).isEmpty())
    return false;
  if (kind == DbObjectTrack && (subject = choosePlacedObject()).isNull())
    return false;
  if (!m_editor->beginEdit())
    return false;
  {
    kovDbAnimationPtr animation = m_editor->openAnimation(OdDb::kForWrite);
    if (animation.isNull())
      return false;
    kovAnimationTrackPtr track;
    switch (kind) {
    case CameraTrack: track = cameraTrack(); break;
    case EntityTrack: track = entityTrack(subject); break;
    case EnvironmentTrack: track = environmentTrack(); break;
    case SpawnedObjectTrack: track = spawnedTrack(block); break;
    case DbObjectTrack: track = placedObjectTrack(subject); break;
    }
    animation->editTracks().push_back(track);
    animation->connetTrackSignals(track.get());
    animation->makeTrackNameUnique(track.get());
  }
  m_editor->editDone();
  return true;
}

kovAnimationTrackPtr kovAddTrackMenu::cameraTrack() const
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityUniqueName(m_editor->animationId().database(), QStringLiteral("Camera"));
  track->setName(text(CameraTrack));
  // A path laid out at eye height that the camera looks along, and angles
  // that add no turn of their own until the user gives some. Both items are
  // added first: adding moves the items.
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

kovAnimationTrackPtr kovAddTrackMenu::entityTrack(const OdDbObjectId& entity) const
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityId(entity);
  track->setName(text(EntityTrack));
  addStandingPath(*track, placeOf(entity));
  return track;
}

// The sun of an environment track stands where the site's place and north
// put it at the start hour; its "Time" keyframes move it through the day.
kovAnimationTrackPtr kovAddTrackMenu::environmentTrack() const
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityUniqueName(m_editor->animationId().database(), QStringLiteral("Environment"));
  track->setName(text(EnvironmentTrack));
  addParameter(*track, QStringLiteral("Longitude"), hostSetting(kLongitudeSetting, kDefaultLongitude).toDouble());
  addParameter(*track, QStringLiteral("Latitude"), hostSetting(kLatitudeSetting, kDefaultLatitude).toDouble());
  addParameter(*track, QStringLiteral("North"), hostSetting(kNorthSetting, kDefaultNorth).toDouble());
  addParameter(*track, QStringLiteral("Time"), kStartHour);
  return track;
}

kovAnimationTrackPtr kovAddTrackMenu::spawnedTrack(const QString& block) const
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityUniqueName(m_editor->animationId().database(), block);
  track->setName(block);
  addStandingPath(*track, OdGePoint3d::kOrigin);
  return track;
}

kovAnimationTrackPtr kovAddTrackMenu::placedObjectTrack(const OdDbObjectId& reference) const
{
  kovAnimationTrackPtr track(new kovAnimationTrack);
  track->setEntityId(reference);
  OdDbObjectPtr object = reference.openObject(OdDb::kForRead);
  const OdDbBlockReferencePtr placed = OdDbBlockReference::cast(object.get());
  track->setName(placed.isNull() ? text(DbObjectTrack) : blockName(placed->blockTableRecord()));
  addStandingPath(*track, placeOf(reference));
  return track;
}

OdDbObjectId kovAddTrackMenu::chooseEntity() const
{
  const OdDbObjectId selected = kovHostSelection::first(m_editor->animationId().database());
  // The animation itself is no subject of its own tracks.
  if (selected.isNull() || selected == m_editor->animationId()) {
    QMessageBox::warning(m_editor, text(EntityTrack), tr("No Entity selected"));
    return OdDbObjectId();
  }
  return selected;
}

QString kovAddTrackMenu::chooseLibraryBlock() const
{
  const QStringList names = libraryBlocks(m_editor->animationId().database());
  if (names.isEmpty()) {
    QMessageBox::warning(m_editor, text(SpawnedObjectTrack), tr("No xBlocks in project"));
    return QString();
  }
  bool ok = false;
  const QString name =
      QInputDialog::getItem(m_editor, text(SpawnedObjectTrack), tr("xBlock:"), names, 0, false, &ok);
  return ok ? name : QString();
}

// A placed object that is selected is taken as it is; otherwise the user
// picks one of them.
OdDbObjectId kovAddTrackMenu::choosePlacedObject() const
{
  OdDbDatabase* db = m_editor->animationId().database();
  const QList<QPair<QString, OdDbObjectId>> placed = placedObjects(db);
  if (placed.isEmpty()) {
    QMessageBox::warning(m_editor, text(DbObjectTrack), tr("No xBlocks in project"));
    return OdDbObjectId();
  }
  const OdDbObjectId selected = kovHostSelection::first(db);
  QStringList labels;
  for (const auto& object : placed) {
    if (object.second == selected)
      return selected;
    labels << object.first;
  }
  bool ok = false;
  const QString label = QInputDialog::getItem(m_editor, text(DbObjectTrack), tr("xBlock:"), labels, 0, false, &ok);
  const int index = labels.indexOf(label);
  return ok && index >= 0 ? placed.at(index).second : OdDbObjectId();
}
