#ifndef KOV_DB_TEMP_BLOCK_REFERENCE_H
#define KOV_DB_TEMP_BLOCK_REFERENCE_H

#include "Db/OdDbBlockReference.h"

// The block reference that shows a spawned or block-library subject of an
// animation track. Filed exactly as a block reference; its own class tells
// the drawing's other readers that the animation made it.
class kovDbTempBlockReference : public OdDbBlockReference {
public:
  ODDB_DECLARE_MEMBERS(kovDbTempBlockReference);
  kovDbTempBlockReference() = default;
};

typedef OdSmartPtr<kovDbTempBlockReference> kovDbTempBlockReferencePtr;

#endif
