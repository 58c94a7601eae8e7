#ifndef OD_STRING_ARRAY_H
#define OD_STRING_ARRAY_H

#include "Rx/OdArray.h"
#include "Rx/OdString.h"

typedef OdArray<OdString> OdStringArray;

#endif
