#ifndef OD_GI_H
#define OD_GI_H

#include "Rx/OdPlatform.h"

// Why a drawable is asked to draw itself.
enum OdGiRegenType {
  eOdGiRegenTypeInvalid = 0,
  kOdGiStandardDisplay = 2,
  kOdGiHideOrShadeCommand = 3,
  kOdGiRenderCommand = 4,
  kOdGiForExplode = 5,
  kOdGiSaveWorldDrawForProxy = 6
};

// A selection marker: names the part of a drawable a primitive belongs to, so
// that picking can tell the parts apart. 0 means none.
typedef OdInt64 OdGsMarker;

// Line weights in hundredths of a millimetre, and the special values.
enum OdGiLineWeight : OdInt16 {
  kOdGiLnWtByLayer = -1,
  kOdGiLnWtByBlock = -2,
  kOdGiLnWtByLwDefault = -3
};

#endif
