#ifndef KOV_STL_GUARD_H
#define KOV_STL_GUARD_H

#include <QString>

// Looks at an STL file before a reader trusts it: a binary STL's header gives
// a triangle count the reader allocates for, so a count the file's size can't
// hold (a truncated file, or garbage claiming a billion triangles) is refused
// here with OdError, before anything is allocated. ASCII files pass.
class kovStlGuard {
public:
  static void check(const QString& path);
};

#endif
