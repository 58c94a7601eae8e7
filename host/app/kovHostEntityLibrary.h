#ifndef KOV_HOST_ENTITY_LIBRARY_H
#define KOV_HOST_ENTITY_LIBRARY_H

#include "animation/kovOdDbEx.h"

// The reference host's entity library. Its blocks are the drawing's own block
// definitions, found by name; a block's named animations are the block
// animations (kovDbBlockAnimation) inside it, as imports put them there.
// Entities are known by their handle, written in hexadecimal.
class kovHostEntityLibrary : public kovOdDbEx {
public:
  QStringList libraryBlockNames(OdDbDatabase* db) const override;
  QStringList animationNames(OdDbDatabase* db, const QString& uniqueName) const override;
  OdDbObjectId blockDefinition(OdDbDatabase* db, const QString& uniqueName) const override;
  OdDbObjectId entityByName(OdDbDatabase* db, const QString& name) const override;
  QMap<QString, OdGeMatrix3d> nestedTransforms(OdDbDatabase* db, const QString& uniqueName,
                                               const QString& animationName, int ms) const override;
};

#endif
