#include "Ed/OdDbUserIO.h"

#include "Db/OdDbDatabase.h"

#include "Rx/OdRxSelfRegistering.h"

ODRX_SELF_REGISTERING_MEMBERS(OdDbUserIO, OdEdBaseUserIO, ODRX_NULL_CONSTR)

OdDbObjectIdArray OdDbUserIO::selectByHandles(OdDbDatabase* database, const OdString& prompt, int options,
                                              OdDbObjectIdArray ids)
{
  const OdString shown = prompt.isEmpty() ? OdString(L"Select objects:") : prompt;
  for (;;) {
    const OdString answer = getInput(shown);
    if (answer.isEmpty())
      return ids;
    const OdDbHandle handle(answer);
    const OdDbObjectId id = handle.isNull() ? OdDbObjectId() : database->getOdDbObjectId(handle);
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
