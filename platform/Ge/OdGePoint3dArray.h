#ifndef OD_GE_POINT3D_ARRAY_H
#define OD_GE_POINT3D_ARRAY_H

#include "Ge/OdGePoint3d.h"
#include "Rx/OdArray.h"

typedef OdArray<OdGePoint3d> OdGePoint3dArray;

#endif
