#ifndef KOV_ANIMATION_READER_INPUT_H
#define KOV_ANIMATION_READER_INPUT_H

// One entry for arbitrary bytes into every reader of animations, shared by the
// fuzz targets and the test that replays what they found. A drawing file
// image (by its magic) goes to the drawing loader, with its length and
// checksum made to agree first so that the bytes reach the object readers;
// anything else is read as a track, as an animation entity and as a polygon
// mesh, in a drawing so that handles and older block records have somewhere
// to go.
// Readers may refuse the bytes with OdError; anything else escapes.

#include "kovAnimationDrawing.h"

#include "polymesh/kovDbPolygonMesh.h"

#include "Db/OdDbFileReader.h"
#include "Rx/OdError.h"

inline void kovReadAnimationInput(const OdUInt8* data, size_t size)
{
  if (size >= sizeof(kDbFileMagic) && std::memcmp(data, kDbFileMagic, sizeof(kDbFileMagic)) == 0) {
    const std::vector<OdUInt8> image = kovSealDrawingImage(std::vector<OdUInt8>(data, data + size));
    try {
      OdDbFileReader::readBuffer(image.data(), image.size(), OdString(L"input"));
    } catch (const OdError&) {
    }
    return;
  }
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  OdDbMemoryFiler filer(db.get());
  filer.setExternalBuffer(data, size);
  try {
    kovAnimationTrack track;
    track.dwgInFields(&filer);
  } catch (const OdError&) {
  }
  filer.setExternalBuffer(data, size);
  try {
    kovDbAnimationPtr animation = kovDbAnimation::createObject();
    animation->dwgInFields(&filer);
  } catch (const OdError&) {
  }
  filer.setExternalBuffer(data, size);
  try {
    kovDbPolygonMeshPtr mesh = kovDbPolygonMesh::createObject();
    mesh->dwgInFields(&filer);
  } catch (const OdError&) {
  }
}

#endif
