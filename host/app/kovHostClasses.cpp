#include "host/app/kovHostClasses.h"

#include "polymesh/kovDbPolygonMesh.h"
#include "scene/kovDbBlockAnimation.h"

kovHostClasses::kovHostClasses()
{
  kovDbPolygonMesh::rxInit();
  kovDbBlockAnimation::rxInit();
}

kovHostClasses::~kovHostClasses()
{
  kovDbBlockAnimation::rxUninit();
  kovDbPolygonMesh::rxUninit();
}
