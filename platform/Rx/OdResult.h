#ifndef OD_RESULT_H
#define OD_RESULT_H

// Result codes of platform operations. eOk is zero; everything else names a
// failure that OdError can carry and describe.
enum OdResult {
  eOk = 0,
  eNotImplementedYet,
  eNotApplicable,
  eInvalidInput,
  eInvalidIndex,
  eOutOfRange,
  eKeyNotFound,
  eDuplicateKey,
  eNullPtr,
  eNullObjectPointer,
  eNullObjectId,
  eNullHandle,
  eWrongObjectType,
  eNotThatKindOfClass,
  eNotInitializedYet,
  eAlreadyInDb,
  eNoDatabase,
  eWrongDatabase,
  eNotOpenForRead,
  eNotOpenForWrite,
  eWasOpenForWrite,
  eWasErased,
  ePermanentlyErased,
  eWasNotErased,
  eMakeMeProxy,
  eFileNotFound,
  eFileAccessErr,
  eFileInternalErr,
  eFileSharingViolation,
  eCantOpenFile,
  eEndOfFile,
  eDwgObjectImproperlyRead,
  eInvalidDwgVersion,
  eBadDwgFile,
  eDLLLoadFailed,
  eInvalidModule,
  eUserBreak,
  eDegenerateGeometry,
  eNoInterpolation,
  eSingularMatrix,
  eNotAnEntity,
  eAmbiguousInput,
  eNotOpenForNotify,
  eOutOfMemory,
  eInvalidExtents,
  eLastResultCode
};

// A short English description of a result code, used by OdError.
const wchar_t* odResultDescription(OdResult res);

#endif
