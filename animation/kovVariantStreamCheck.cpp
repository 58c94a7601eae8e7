// What QDataStream (version 5.15) writes for a variant, as walked here:
//
//   quint32 type id, qint8 null flag, then the value by type:
//   - fixed size: bool, char, signed and unsigned char, QCborSimpleType (1);
//     short, unsigned short, QChar (2); int, unsigned int, QTime (4);
//     64-bit integers, long, unsigned long, double, float (as a double),
//     QDate (8); QSize, QPoint (8); QSizeF, QPointF, QRect, QLine, QUuid
//     (16); QRectF, QLineF (32); nothing for an invalid variant and nullptr.
//   - quint32 length then the bytes (all ones for null): QByteArray, QString
//     (UTF-16, so an even length), QUrl, QJsonObject, QJsonArray and
//     QJsonDocument (their JSON text), QCborValue, QCborArray and QCborMap
//     (their CBOR encoding).
//   - quint32 count then the elements: QStringList, QByteArrayList,
//     QVariantList (variants), QVariantMap and QVariantHash (text key, then
//     variant).
//   - QBitArray: quint32 bit count, then the bits in (count + 7) / 8 bytes.
//   - QDateTime: QDate, QTime, qint8 time basis (local, UTC, offset, zone);
//     an offset from UTC adds a qint32. A named time zone is refused: it
//     reads back as its zone only where the zone database knows the name, and
//     QDataStream crashes when writing a date and time whose zone it did not
//     know.
//   - QLocale: its name as a text. QRegExp: text pattern, three quint8 flags.
//     QRegularExpression: text pattern, quint32 options.
//   - QJsonValue: quint8 kind (0 null, 0x80 undefined: nothing more; 1 bool;
//     2 double; 3 text; 4 array and 5 object: their JSON text).
#include "animation/kovVariantStreamCheck.h"

#include <QCborStreamReader>
#include <QMetaType>
#include <QtEndian>

namespace {

int fixedSize(int typeId)
{
  switch (typeId) {
  case QMetaType::UnknownType:
  case QMetaType::Nullptr: return 0;
  case QMetaType::Bool:
  case QMetaType::Char:
  case QMetaType::SChar:
  case QMetaType::UChar:
  case QMetaType::QCborSimpleType: return 1;
  case QMetaType::Short:
  case QMetaType::UShort:
  case QMetaType::QChar: return 2;
  case QMetaType::Int:
  case QMetaType::UInt:
  case QMetaType::QTime: return 4;
  case QMetaType::LongLong:
  case QMetaType::ULongLong:
  case QMetaType::Long:
  case QMetaType::ULong:
  case QMetaType::Double:
  case QMetaType::Float:
  case QMetaType::QDate:
  case QMetaType::QSize:
  case QMetaType::QPoint: return 8;
  case QMetaType::QSizeF:
  case QMetaType::QPointF:
  case QMetaType::QRect:
  case QMetaType::QLine:
  case QMetaType::QUuid: return 16;
  case QMetaType::QRectF:
  case QMetaType::QLineF: return 32;
  default: return -1;
  }
}

bool isBlock(int typeId)
{
  switch (typeId) {
  case QMetaType::QByteArray:
  case QMetaType::QString:
  case QMetaType::QUrl:
  case QMetaType::QJsonObject:
  case QMetaType::QJsonArray:
  case QMetaType::QJsonDocument:
  case QMetaType::QCborValue:
  case QMetaType::QCborArray:
  case QMetaType::QCborMap: return true;
  default: return false;
  }
}

bool isCbor(int typeId)
{
  return typeId == QMetaType::QCborValue || typeId == QMetaType::QCborArray || typeId == QMetaType::QCborMap;
}

// One CBOR item and everything inside it; containers may not declare more
// items than bytes are left, since every item takes at least one.
bool cborItem(QCborStreamReader& reader, qint64 total, int depth)
{
  if (depth > kovVariantStreamCheck::kMaxCborDepth || reader.lastError() != QCborError::NoError)
    return false;
  const quint64 left = static_cast<quint64>(total - reader.currentOffset());
  if (reader.isArray() || reader.isMap()) {
    if (reader.isLengthKnown() && reader.length() > (reader.isMap() ? left / 2 : left))
      return false;
    if (!reader.enterContainer())
      return false;
    while (reader.hasNext()) {
      if (!cborItem(reader, total, depth + 1))
        return false;
    }
    return reader.lastError() == QCborError::NoError && reader.leaveContainer();
  }
  if ((reader.isString() || reader.isByteArray()) && reader.isLengthKnown() && reader.length() > left)
    return false;
  if (reader.isTag()) {
    if (!reader.next())
      return false;
    return cborItem(reader, total, depth + 1);
  }
  return reader.isValid() && reader.next();
}

bool isWholeCbor(const uchar* data, quint32 length)
{
  const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(length));
  QCborStreamReader reader(bytes);
  return cborItem(reader, bytes.size(), 0) && reader.lastError() == QCborError::NoError
    && reader.currentOffset() == bytes.size();
}

class Walker {
public:
  explicit Walker(const QByteArray& bytes)
    : m_data(reinterpret_cast<const uchar*>(bytes.constData()))
    , m_left(static_cast<quint64>(bytes.size()))
  {
  }

  bool variant(int depth)
  {
    quint32 type = 0;
    return depth <= kovVariantStreamCheck::kMaxDepth && u32(type) && skip(1) && value(static_cast<int>(type), depth);
  }

  bool atEnd() const { return m_left == 0; }

private:
  bool value(int type, int depth)
  {
    const int size = fixedSize(type);
    if (size >= 0)
      return skip(static_cast<quint64>(size));
    if (isBlock(type)) {
      const uchar* at = nullptr;
      quint32 length = 0;
      return block(at, length, type == QMetaType::QString) && (!isCbor(type) || (at && isWholeCbor(at, length)));
    }
    switch (type) {
    case QMetaType::QStringList: return list([this] { return text(); });
    case QMetaType::QByteArrayList: return list([this] { return bytes(); });
    case QMetaType::QVariantList: return list([this, depth] { return variant(depth + 1); }, 5);
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash: return list([this, depth] { return text() && variant(depth + 1); }, 9);
    case QMetaType::QBitArray: return bitArray();
    case QMetaType::QDateTime: return dateTime();
    case QMetaType::QLocale: return text();
    case QMetaType::QRegExp: return text() && skip(3);
    case QMetaType::QRegularExpression: return text() && skip(4);
    case QMetaType::QJsonValue: return jsonValue();
    default: return false;
    }
  }

  bool u8(quint8& v)
  {
    if (m_left < 1)
      return false;
    v = *m_data;
    return skip(1);
  }
  bool u32(quint32& v)
  {
    if (m_left < 4)
      return false;
    v = qFromBigEndian<quint32>(m_data);
    return skip(4);
  }
  bool skip(quint64 n)
  {
    if (m_left < n)
      return false;
    m_data += n;
    m_left -= n;
    return true;
  }
  // A length-prefixed block; all ones marks a null text or array (at stays
  // null then).
  bool block(const uchar*& at, quint32& length, bool utf16)
  {
    if (!u32(length))
      return false;
    if (length == 0xFFFFFFFFu)
      return true;
    if (utf16 && (length & 1u))
      return false;
    at = m_data;
    return skip(length);
  }
  bool text()
  {
    const uchar* at = nullptr;
    quint32 length = 0;
    return block(at, length, true);
  }
  bool bytes()
  {
    const uchar* at = nullptr;
    quint32 length = 0;
    return block(at, length, false);
  }
  // Elements take at least minBytes each, which bounds the count before
  // QDataStream reserves room for it.
  template <typename Element> bool list(Element element, quint64 minBytes = 4)
  {
    quint32 count = 0;
    if (!u32(count) || count > m_left / minBytes)
      return false;
    for (quint32 i = 0; i < count; ++i) {
      if (!element())
        return false;
    }
    return true;
  }
  bool bitArray()
  {
    quint32 bits = 0;
    return u32(bits) && skip((static_cast<quint64>(bits) + 7) / 8);
  }
  bool dateTime()
  {
    quint8 basis = 0;
    if (!skip(8 + 4) || !u8(basis))
      return false;
    switch (basis) {
    case Qt::LocalTime:
    case Qt::UTC: return true;
    case Qt::OffsetFromUTC: return skip(4);
    default: return false;
    }
  }
  bool jsonValue()
  {
    quint8 kind = 0;
    if (!u8(kind))
      return false;
    switch (kind) {
    case 0x00:
    case 0x80: return true;
    case 0x01: return skip(1);
    case 0x02: return skip(8);
    case 0x03: return text();
    case 0x04:
    case 0x05: return bytes();
    default: return false;
    }
  }

  const uchar* m_data;
  quint64 m_left;
};

} // namespace

bool kovVariantStreamCheck::knowsType(int typeId)
{
  if (fixedSize(typeId) >= 0 || isBlock(typeId))
    return true;
  switch (typeId) {
  case QMetaType::QStringList:
  case QMetaType::QByteArrayList:
  case QMetaType::QVariantList:
  case QMetaType::QVariantMap:
  case QMetaType::QVariantHash:
  case QMetaType::QBitArray:
  case QMetaType::QDateTime:
  case QMetaType::QLocale:
  case QMetaType::QRegExp:
  case QMetaType::QRegularExpression:
  case QMetaType::QJsonValue: return true;
  default: return false;
  }
}

bool kovVariantStreamCheck::hasFixedSize(int typeId)
{
  return fixedSize(typeId) >= 0;
}

bool kovVariantStreamCheck::isWholeVariant(const QByteArray& bytes)
{
  Walker walker(bytes);
  return walker.variant(0) && walker.atEnd();
}
