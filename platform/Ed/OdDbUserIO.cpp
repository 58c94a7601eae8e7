#include "Ed/OdDbUserIO.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbObjectIterator.h"

#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdDbUserIO, OdEdBaseUserIO, ODRX_NULL_CONSTR)

namespace {

// The newest entity of model space that is not chosen yet.
OdDbObjectId lastUnchosen(OdDbDatabase* database, const OdDbObjectIdArray& chosen)
{
  OdDbObjectId last;
  OdDbBlockTableRecordPtr modelSpace = OdDbBlockTableRecord::cast(database->getModelSpaceId().openObject().get());
  if (modelSpace.isNull())
    return last;
  for (OdDbObjectIteratorPtr it = modelSpace->newIterator(); !it->done(); it->step()) {
    if (!chosen.contains(it->objectId()))
      last = it->objectId();
  }
  return last;
}

} // namespace

OdDbObjectIdArray OdDbUserIO::selectByHandles(OdDbDatabase* database, const OdString& prompt, int options,
                                              OdDbObjectIdArray ids)
{
  const OdString shown = prompt.isEmpty() ? OdString(L"Select objects:") : prompt;
  for (;;) {
    const OdString answer = getInput(shown);
    if (answer.isEmpty())
      return ids;
    OdDbObjectId id;
    if (answer.iCompare(L"Last") == 0 || answer.iCompare(L"L") == 0) {
      id = lastUnchosen(database, ids);
      if (id.isNull()) {
        putString(OdString(L"No more objects to take."));
        continue;
      }
    } else {
      const OdDbHandle handle(answer);
      id = handle.isNull() ? OdDbObjectId() : database->getOdDbObjectId(handle);
    }
    if (!id.isValid()) {
      putString(OdString(L"No object has the handle ") + answer + L".");
      continue;
    }
    if (!ids.contains(id))
      ids.append(id);
    if (options & OdEd::kSelSingleEntity)
      return ids;
  }
}
