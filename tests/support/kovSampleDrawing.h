#ifndef KOV_SAMPLE_DRAWING_H
#define KOV_SAMPLE_DRAWING_H

#include "Db/OdDbDatabase.h"

// A drawing with one of everything the database classes offer: two block
// definitions, references to them (one created before the block it refers
// to, so that a file holds a reference ahead of its target), a named view, a
// light, splines and an erased entity in model space. Needs odInitialize().
struct kovSampleDrawing {
  OdDbDatabasePtr db;
  OdDbObjectId spline;      // model space, with end tangents
  OdDbObjectId light;       // model space spotlight
  OdDbObjectId erased;      // model space light, erased
  OdDbObjectId chairBlock;  // block "Chair": one spline
  OdDbObjectId tableBlock;  // block "Table": one light, created after tableRef
  OdDbObjectId chairRef;    // model space reference to Chair, rotated and moved
  OdDbObjectId tableRef;    // model space reference to Table
  OdDbObjectId view;        // view "Front"
};

kovSampleDrawing kovBuildSampleDrawing();

#endif
