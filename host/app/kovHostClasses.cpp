#include "host/app/kovHostClasses.h"

#include "polymesh/kovDbPolygonMesh.h"

kovHostClasses::kovHostClasses()
{
  kovDbPolygonMesh::rxInit();
}

kovHostClasses::~kovHostClasses()
{
  kovDbPolygonMesh::rxUninit();
}
