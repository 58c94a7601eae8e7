#ifndef OD_GE_VECTOR3D_ARRAY_H
#define OD_GE_VECTOR3D_ARRAY_H

#include "Ge/OdGeVector3d.h"
#include "Rx/OdArray.h"

typedef OdArray<OdGeVector3d> OdGeVector3dArray;

#endif
