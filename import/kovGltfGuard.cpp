#include "import/kovGltfGuard.h"

#include "Rx/OdError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace {

const quint32 kMagic = 0x46546C67;
const quint32 kJsonChunk = 0x4E4F534A;
const quint32 kBinChunk = 0x004E4942;

[[noreturn]] void refuse(const QString& name, const QString& why)
{
  throw OdError(eBadDwgFile, odFromQString(name + QStringLiteral(" is not a usable glTF file: ") + why));
}

quint32 word(const QByteArray& bytes, int at)
{
  return quint32(uchar(bytes[at])) | quint32(uchar(bytes[at + 1])) << 8 | quint32(uchar(bytes[at + 2])) << 16
         | quint32(uchar(bytes[at + 3])) << 24;
}

} // namespace

kovGltfGuard::Summary kovGltfGuard::check(const QString& path)
{
  const QString name = QFileInfo(path).fileName();
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    throw OdError(eCantOpenFile, odFromQString(QStringLiteral("Can't open %1: %2").arg(path, file.errorString())));
  const qint64 size = file.size();
  const QByteArray head = file.read(20);
  QByteArray json;
  qint64 binBytes = -1;
  if (head.size() >= 4 && word(head, 0) == kMagic) {
    if (head.size() < 20)
      refuse(name, QStringLiteral("the binary header is cut short"));
    if (word(head, 4) != 2)
      refuse(name, QStringLiteral("container version %1 is not 2").arg(word(head, 4)));
    const qint64 total = word(head, 8);
    if (total > size)
      refuse(name, QStringLiteral("the header claims %1 bytes but the file has %2").arg(total).arg(size));
    const qint64 jsonBytes = word(head, 12);
    if (word(head, 16) != kJsonChunk || 20 + jsonBytes > total)
      refuse(name, QStringLiteral("the JSON chunk of %1 bytes does not fit in %2").arg(jsonBytes).arg(total));
    json = file.read(jsonBytes);
    const qint64 binAt = 20 + jsonBytes;
    if (binAt + 8 <= total) {
      const QByteArray binHead = file.read(8);
      binBytes = word(binHead, 0);
      if (word(binHead, 4) == kBinChunk && binAt + 8 + binBytes > total)
        refuse(name, QStringLiteral("the binary chunk claims %1 bytes but %2 are left").arg(binBytes).arg(total - binAt - 8));
    }
  } else {
    file.seek(0);
    json = file.readAll();
  }

  QJsonParseError error;
  const QJsonDocument doc = QJsonDocument::fromJson(json, &error);
  if (!doc.isObject())
    refuse(name, error.error != QJsonParseError::NoError ? error.errorString() + QStringLiteral(" at byte %1").arg(error.offset)
                                                         : QStringLiteral("the JSON is not an object"));
  const QJsonObject root = doc.object();
  const QString version = root.value(QStringLiteral("asset")).toObject().value(QStringLiteral("version")).toString();
  if (!version.startsWith(QLatin1Char('2')))
    refuse(name, QStringLiteral("version \"%1\" is not 2.0").arg(version));

  const QJsonArray buffers = root.value(QStringLiteral("buffers")).toArray();
  for (int i = 0; i < buffers.size(); ++i) {
    const QJsonObject buffer = buffers[i].toObject();
    const double claimed = buffer.value(QStringLiteral("byteLength")).toDouble(-1);
    const QString uri = buffer.value(QStringLiteral("uri")).toString();
    double available = 0;
    if (uri.isEmpty())
      available = i == 0 ? double(binBytes) : 0.0;
    else if (uri.startsWith(QStringLiteral("data:"))) {
      const int padding = uri.endsWith(QStringLiteral("==")) ? 2 : uri.endsWith(QLatin1Char('=')) ? 1 : 0;
      available = double(uri.size() - uri.indexOf(QLatin1Char(',')) - 1) * 3.0 / 4.0 - padding;
    }
    else
      available = double(QFileInfo(QDir(QFileInfo(path).absolutePath()), QUrl::fromPercentEncoding(uri.toUtf8())).size());
    if (claimed < 0 || claimed > available)
      refuse(name, QStringLiteral("buffer %1 claims %2 bytes but %3 are there").arg(i).arg(claimed, 0, 'f', 0).arg(available, 0, 'f', 0));
  }
  Summary summary;
  summary.animated = !root.value(QStringLiteral("animations")).toArray().isEmpty();
  return summary;
}
