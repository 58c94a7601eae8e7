#include "Db/OdDbReadCount.h"

#include "Rx/OdError.h"

#include <QString>

OdInt32 odDbReadCount(OdDbDwgFiler* filer, OdUInt64 minBytesEach, const char* what)
{
  const OdInt32 count = filer->rdInt32();
  if (count < 0 || static_cast<OdUInt64>(count) * minBytesEach > filer->bytesLeft())
    throw OdError(eDwgObjectImproperlyRead,
                  odFromQString(QStringLiteral("impossible %1 count %2").arg(QLatin1String(what)).arg(count)));
  return count;
}
