#ifndef KOV_NAMED_VIEWS_H
#define KOV_NAMED_VIEWS_H

#include "host/api/kovViewCamera.h"

#include "Rx/OdResult.h"
#include "Rx/OdString.h"

#include <QStringList>

class OdDbDatabase;

// A drawing's named views (its view table) as cameras. A view keeps the eye,
// the target, the up direction and the field of view as the viewport had
// them; depth of field stays with the viewport.
namespace kovNamedViews {

QStringList names(OdDbDatabase* db);
// Stores the camera under the name, replacing a view of that name; eOk, else
// eInvalidInput (a name the table refuses, or a camera without a line of
// sight).
OdResult store(OdDbDatabase* db, const OdString& name, const kovViewCamera& camera);
// The camera of the view of that name over base (which gives what a view
// does not hold); eKeyNotFound when there is none.
OdResult find(OdDbDatabase* db, const OdString& name, const kovViewCamera& base, kovViewCamera& camera);

} // namespace kovNamedViews

#endif
