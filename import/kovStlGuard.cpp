#include "import/kovStlGuard.h"

#include "Rx/OdError.h"

#include <QFile>
#include <QFileInfo>

namespace {

const qint64 kHeaderBytes = 84;
const qint64 kTriangleBytes = 50;

// Some binary writers start their header with "solid" too; text has no
// control bytes besides line breaks and tabs.
bool isText(const QByteArray& head)
{
  if (!head.trimmed().startsWith("solid"))
    return false;
  for (char c : head)
    if (uchar(c) < 32 && c != '\n' && c != '\r' && c != '\t')
      return false;
  return true;
}

} // namespace

void kovStlGuard::check(const QString& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    throw OdError(eCantOpenFile, odFromQString(QStringLiteral("Can't open %1: %2").arg(path, file.errorString())));
  const qint64 size = file.size();
  const QByteArray head = file.read(kHeaderBytes);
  if (isText(head))
    return;
  const QString name = QFileInfo(path).fileName();
  if (head.size() < kHeaderBytes)
    throw OdError(eEndOfFile, odFromQString(QStringLiteral("%1 is not an STL file: %2 bytes are too few for a binary "
                                                           "STL's header and it does not start with \"solid\"")
                                              .arg(name)
                                              .arg(size)));
  const quint32 count = quint32(uchar(head[80])) | quint32(uchar(head[81])) << 8 | quint32(uchar(head[82])) << 16
                        | quint32(uchar(head[83])) << 24;
  const qint64 room = (size - kHeaderBytes) / kTriangleBytes;
  if (qint64(count) > room)
    throw OdError(eEndOfFile, odFromQString(QStringLiteral("%1 claims %2 triangles but its %3 bytes hold at most %4: "
                                                           "the file is truncated or damaged")
                                              .arg(name)
                                              .arg(count)
                                              .arg(size)
                                              .arg(room)));
}
