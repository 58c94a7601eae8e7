// libFuzzer target over every reader of animations and scene meshes: the
// drawing loader (for inputs that start as a drawing file), the animation
// entity's reader, the track's reader and the polygon mesh's reader. See
// kovAnimationReaderInput.h.

#include "kovAnimationReaderInput.h"

#include "db/kovDbTempBlockReference.h"
#include "polymesh/kovDbPolygonMesh.h"

#include "Db/OdDbModule.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
  odInitialize();
  kovDbTempBlockReference::rxInit();
  kovDbAnimation::rxInit();
  kovDbPolygonMesh::rxInit();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
  kovReadAnimationInput(data, size);
  return 0;
}
