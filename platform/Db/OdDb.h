#ifndef OD_DB_H
#define OD_DB_H

// Enumerations shared by the database classes.
namespace OdDb {

// How an object is opened through its id. A database-resident object that no
// one has opened is kNotOpen; an object outside any database is always
// readable and writable.
enum OpenMode { kNotOpen = -1, kForRead = 0, kForWrite = 1, kForNotify = 2 };

// What a filer is used for; objects may file differently for each purpose.
enum FilerType {
  kFileFiler = 0,
  kCopyFiler = 1,
  kUndoFiler = 2,
  kBagFiler = 3,
  kIdXlateFiler = 4,
  kPageFiler = 5,
  kDeepCloneFiler = 6,
  kIdFiler = 7,
  kPurgeFiler = 8,
  kWblockCloneFiler = 9
};

// Where a filer's seek offset counts from.
enum FilerSeekType { kSeekFromStart = 0, kSeekFromCurrent = 1, kSeekFromEnd = 2 };

// The filing version of the current release, which classes register with.
enum DwgVersion { kDHL_CURRENT = 33 };
enum MaintReleaseVer { kMReleaseCurrent = 55 };

enum Visibility { kVisible = 0, kInvisible = 1 };

} // namespace OdDb

#endif
