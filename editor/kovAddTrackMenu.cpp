#include "editor/kovAddTrackMenu.h"

#include "db/kovDbAnimation.h"
#include "editor/kovAnimationEditorWidget.h"
#include "editor/kovAnimationTracksHeaderWidget.h"
#include "editor/kovHostSelection.h"
#include "editor/kovTrackFactory.h"

#include "host/api/IkovApplication.h"

#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

namespace {

const char* const kAdvancedSetting = "AnimationsAdvanced";

bool advancedOn()
{
  IkovApplication* app = kovApp();
  return !app || app->setting(QLatin1String(kAdvancedSetting), true).toBool();
}

} // namespace

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
  if (advancedOn())
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
    case CameraTrack: track = kovTrackFactory::camera(db, text(kind)); break;
    case EntityTrack: track = kovTrackFactory::entity(subject, text(kind)); break;
    case EnvironmentTrack: track = kovTrackFactory::environment(db, text(kind)); break;
    case SpawnedObjectTrack: track = kovTrackFactory::spawnedObject(db, block); break;
    case DbObjectTrack: track = kovTrackFactory::placedObject(subject, text(kind)); break;
    }
    kovTrackFactory::add(animation.get(), track);
  }
  m_editor->editDone();
  return true;
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
  const QStringList names = kovTrackFactory::libraryBlocks(m_editor->animationId().database());
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
  const QList<QPair<QString, OdDbObjectId>> placed = kovTrackFactory::placedObjects(db);
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
