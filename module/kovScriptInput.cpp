#include "module/kovScriptInput.h"

#include "db/kovEditingState.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbObjectIterator.h"
#include "Ed/OdDbScriptUserIO.h"

#include <QStringList>

namespace {

QList<OdDbObjectId> animationsOf(OdDbDatabase* db)
{
  QList<OdDbObjectId> ids;
  OdDbObjectPtr space = db->getModelSpaceId().openObject(OdDb::kForRead);
  const OdDbBlockTableRecordPtr modelSpace = OdDbBlockTableRecord::cast(space.get());
  for (OdDbObjectIteratorPtr it = modelSpace.isNull() ? OdDbObjectIteratorPtr() : modelSpace->newIterator();
       !it.isNull() && !it->done(); it->step()) {
    OdDbObjectPtr object = it->objectId().openObject(OdDb::kForRead);
    if (!kovDbAnimation::cast(object.get()).isNull())
      ids << it->objectId();
  }
  return ids;
}

QString animationName(const OdDbObjectId& id)
{
  OdDbObjectPtr object = id.openObject(OdDb::kForRead);
  const kovDbAnimationPtr animation = kovDbAnimation::cast(object.get());
  return animation.isNull() ? QString() : animation->animationName();
}

// The index of the entry of names that text names: a number from 1, else a
// name (exact first, then ignoring case); -1 for none.
int pick(const QStringList& names, const QString& text)
{
  bool isNumber = false;
  const int number = text.toInt(&isNumber);
  if (isNumber)
    return number >= 1 && number <= names.size() ? number - 1 : -1;
  const int exact = names.indexOf(text);
  if (exact >= 0)
    return exact;
  for (int i = 0; i < names.size(); ++i) {
    if (names.at(i).compare(text, Qt::CaseInsensitive) == 0)
      return i;
  }
  return -1;
}

QString listed(const QStringList& names)
{
  QStringList numbered;
  for (int i = 0; i < names.size(); ++i)
    numbered << QStringLiteral("%1 \"%2\"").arg(i + 1).arg(names.at(i));
  return numbered.join(QStringLiteral(", "));
}

} // namespace

kovScriptInput::kovScriptInput(OdEdCommandContext* pCmdCtx)
  : m_context(pCmdCtx)
{
  OdRxObject* base = m_context->baseDatabase();
  if (!base)
    throw OdError_NotThatKindOfClass(nullptr, OdDbDatabase::desc());
  m_db = base;
}

[[noreturn]] void kovScriptInput::fail(const QString& message)
{
  throw OdError(eInvalidInput, odFromQString(message));
}

bool kovScriptInput::lineEnded() const
{
  const OdSmartPtr<OdDbScriptUserIO> script = OdDbScriptUserIO::cast(io());
  return !script.isNull() && script->remainingWords().isEmpty();
}

kovDbAnimationPtr kovScriptInput::animation(OdDb::OpenMode mode) const
{
  OdDbObjectId id = kovEditingState::editingAnimationId();
  if (id.isNull() || id.database() != m_db.get() || id.isErased()) {
    const QList<OdDbObjectId> all = animationsOf(m_db.get());
    if (all.isEmpty())
      fail(tr("The drawing has no animation: make one with createcameraanimation or createanimation."));
    id = all.first();
  }
  OdDbObjectPtr object = id.openObject(mode);
  return kovDbAnimation::cast(object.get());
}

OdDbObjectId kovScriptInput::animationNamed(const QString& name) const
{
  const QList<OdDbObjectId> all = animationsOf(m_db.get());
  QStringList names;
  for (const OdDbObjectId& id : all)
    names << animationName(id);
  bool isNumber = false;
  name.toInt(&isNumber);
  const int index = isNumber ? -1 : pick(names, name);
  if (index < 0)
    fail(all.isEmpty() ? tr("The drawing has no animation.")
                       : tr("No animation is named \"%1\"; the drawing's are: %2.").arg(name, listed(names)));
  return all.at(index);
}

int kovScriptInput::track(const kovDbAnimation& animation)
{
  const QString typed = text(tr("Track (name or number):"));
  QStringList names;
  for (const kovAnimationTrackPtr& track : animation.constTracks())
    names << (track.isNull() ? QString() : track->trackName());
  const int index = pick(names, typed);
  if (index < 0)
    fail(names.isEmpty() ? tr("The animation has no tracks.")
                         : tr("No track is \"%1\"; the tracks are %2.").arg(typed, listed(names)));
  return index;
}

int kovScriptInput::subTrack(const kovAnimationTrack& track)
{
  const QString typed = text(tr("Sub-track (number, parameter name or type):"));
  QStringList names;
  for (const kovAnimationItem& item : track.animationElements())
    names << (item.animationType() == kovAnimationItem::CustomParameter
                  ? item.customParameterName()
                  : kovAnimationItem::animationType2String(item.animationType()));
  int index = pick(names, typed);
  // A type may also be typed without its blanks: LocationBySpline.
  for (int i = 0; index < 0 && i < names.size(); ++i) {
    if (QString(names.at(i)).remove(QLatin1Char(' ')).compare(typed, Qt::CaseInsensitive) == 0)
      index = i;
  }
  if (index < 0)
    fail(names.isEmpty() ? tr("The track \"%1\" has no sub-tracks.").arg(track.trackName())
                         : tr("The track \"%1\" has no sub-track \"%2\"; it has %3.")
                               .arg(track.trackName(), typed, listed(names)));
  return index;
}

int kovScriptInput::cut(const kovDbAnimation& animation)
{
  const int count = animation.sceneCuts().size();
  const QString typed = text(tr("Camera cut number:"));
  bool ok = false;
  const int number = typed.toInt(&ok);
  if (!ok || number < 1 || number > count)
    fail(count == 0 ? tr("The animation has no camera cuts: add one with animationcut.")
                    : tr("There is no camera cut %1; the cuts are 1 to %2.").arg(typed).arg(count));
  return number - 1;
}

QString kovScriptInput::text(const QString& prompt, const QString& defaultValue)
{
  const int options = defaultValue.isNull() ? OdEd::kInpThrowEmpty : OdEd::kInpDefault;
  return odToQString(io()->getString(odFromQString(prompt), options, odFromQString(defaultValue))).trimmed();
}

int kovScriptInput::milliseconds(const QString& prompt)
{
  return io()->getInt(odFromQString(prompt), OdEd::kInpThrowEmpty);
}
