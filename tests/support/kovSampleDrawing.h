#ifndef KOV_SAMPLE_DRAWING_H
#define KOV_SAMPLE_DRAWING_H

#include "Db/OdDbCrc32.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbEntity.h"
#include "Db/OdDbFileFormat.h"

#include <cstring>
#include <vector>

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

// A new block definition of that name holding content (none when null), and a
// model space reference to a block.
OdDbObjectId kovAddBlock(OdDbDatabase* db, const OdString& name, OdDbEntity* content = nullptr);
OdDbObjectId kovAddReference(OdDbDatabase* db, const OdDbObjectId& block);

// A drawing file image whose body length and checksum are made to agree with
// its bytes, however they were changed.
// Inline: the fuzz targets use it without the support library.
inline std::vector<OdUInt8> kovSealDrawingImage(std::vector<OdUInt8> image)
{
  if (image.size() < kDbFileHeaderSize + kDbFileTrailerSize)
    return image;
  const OdUInt64 body = image.size() - kDbFileHeaderSize - kDbFileTrailerSize;
  std::memcpy(image.data() + kDbFileHeaderSize - 8, &body, 8);
  const OdUInt32 crc = odDbCrc32(image.data() + kDbFileHeaderSize, body);
  std::memcpy(image.data() + image.size() - kDbFileTrailerSize, &crc, 4);
  return image;
}

#endif
