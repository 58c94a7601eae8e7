#include "Rx/OdResult.h"

const wchar_t* odResultDescription(OdResult res)
{
  switch (res) {
  case eOk: return L"No error";
  case eNotImplementedYet: return L"Not implemented yet";
  case eNotApplicable: return L"Not applicable";
  case eInvalidInput: return L"Invalid input";
  case eInvalidIndex: return L"Invalid index";
  case eOutOfRange: return L"Out of range";
  case eKeyNotFound: return L"Key not found";
  case eDuplicateKey: return L"Duplicate key";
  case eNullPtr: return L"Null pointer";
  case eNullObjectPointer: return L"Null object pointer";
  case eNullObjectId: return L"Null object id";
  case eNullHandle: return L"Null handle";
  case eWrongObjectType: return L"Wrong object type";
  case eNotThatKindOfClass: return L"Not that kind of class";
  case eNotInitializedYet: return L"Not initialized yet";
  case eAlreadyInDb: return L"Already in database";
  case eNoDatabase: return L"No database";
  case eWrongDatabase: return L"Wrong database";
  case eNotOpenForRead: return L"Not opened for read";
  case eNotOpenForWrite: return L"Not opened for write";
  case eWasOpenForWrite: return L"Was open for write";
  case eWasErased: return L"Object was erased";
  case ePermanentlyErased: return L"Object was permanently erased";
  case eWasNotErased: return L"Object was not erased";
  case eMakeMeProxy: return L"Make me proxy";
  case eFileNotFound: return L"File not found";
  case eFileAccessErr: return L"File access error";
  case eFileInternalErr: return L"File internal error";
  case eFileSharingViolation: return L"File sharing violation";
  case eCantOpenFile: return L"Can't open file";
  case eEndOfFile: return L"Unexpected end of file";
  case eDwgObjectImproperlyRead: return L"Object improperly read";
  case eInvalidDwgVersion: return L"Invalid drawing file version";
  case eBadDwgFile: return L"Bad drawing file";
  case eDLLLoadFailed: return L"Module load failed";
  case eInvalidModule: return L"Invalid module";
  case eUserBreak: return L"User break";
  case eDegenerateGeometry: return L"Degenerate geometry";
  case eNoInterpolation: return L"Interpolation failed";
  case eSingularMatrix: return L"Singular matrix";
  case eNotAnEntity: return L"Not an entity";
  case eAmbiguousInput: return L"Ambiguous input";
  case eNotOpenForNotify: return L"Not opened for notify";
  case eOutOfMemory: return L"Out of memory";
  case eInvalidExtents: return L"Invalid extents";
  case eLastResultCode: break;
  }
  return L"Unknown error";
}
