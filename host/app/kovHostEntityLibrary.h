#ifndef KOV_HOST_ENTITY_LIBRARY_H
#define KOV_HOST_ENTITY_LIBRARY_H

#include "animation/kovOdDbEx.h"

// The reference host's entity library. Its blocks are the drawing's own block
// definitions, found by name; it holds no named animations of its own (a host
// with an animated block library lists them here). Entities are known by
// their handle, written in hexadecimal.
class kovHostEntityLibrary : public kovOdDbEx {
public:
  QStringList animationNames(OdDbDatabase* db, const QString& uniqueName) const override;
  OdDbObjectId blockDefinition(OdDbDatabase* db, const QString& uniqueName) const override;
  OdDbObjectId entityByName(OdDbDatabase* db, const QString& name) const override;
};

#endif
