#include "Ge/OdGeTol.h"

// Constant-initialised (constexpr constructor), so other static objects may use
// them during their own initialisation.
OdGeTol OdGeContext::gTol(1e-10, 1e-10);
OdGeTol OdGeContext::gZeroTol(1e-300, 1e-300);
