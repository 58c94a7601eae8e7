#ifndef KOV_OD_DB_EX_H
#define KOV_OD_DB_EX_H

#include "Db/OdDbObjectId.h"
#include "Ge/OdGeMatrix3d.h"
#include "Rx/OdRxObject.h"

#include <QMap>
#include <QStringList>

class OdDbDatabase;

// The host's own entity library: block definitions that carry named
// animations, and the names by which the host knows entities. The host puts
// its implementation into the system registry under serviceId(); the module
// asks for it where it needs it and copes with its absence.
class kovOdDbEx : public OdRxObject {
public:
  static const OdChar* serviceId() { return L"kov.IOdDbEx"; }
  // The registered library, or null when the host offers none.
  static kovOdDbEx* service();

  // The library's blocks: the block definitions whose names contain
  // "xblock" (in any case), sorted by name.
  virtual QStringList libraryBlockNames(OdDbDatabase* db) const = 0;
  // The named animations the library holds for the subject of that name.
  virtual QStringList animationNames(OdDbDatabase* db, const QString& uniqueName) const = 0;
  // The block definition that shows the subject of that name, or null.
  virtual OdDbObjectId blockDefinition(OdDbDatabase* db, const QString& uniqueName) const = 0;
  // The entity the host knows by that name, or null.
  virtual OdDbObjectId entityByName(OdDbDatabase* db, const QString& name) const = 0;
  // The transforms, relative to the block, of the nested blocks (by their
  // block names) that the named animation of the subject moves, at ms of
  // that animation; empty when there is no such animation.
  virtual QMap<QString, OdGeMatrix3d> nestedTransforms(OdDbDatabase* db, const QString& uniqueName,
                                                       const QString& animationName, int ms) const = 0;
};

#endif
