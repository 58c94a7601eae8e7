#ifndef OD_GE_CONTEXT_H
#define OD_GE_CONTEXT_H

// OdGeContext (the global tolerances) is declared beside OdGeTol.
#include "Ge/OdGeTol.h"

#endif
