#include "animation/kovKeyframeCodec.h"

#include <QDataStream>
#include <QtEndian>

#include <cstring>

namespace {

// Walks one serialised variant, or one element of a typed list, in place.
class VariantWalker {
public:
  explicit VariantWalker(const QByteArray& bytes)
    : m_data(reinterpret_cast<const uchar*>(bytes.constData()))
    , m_left(static_cast<size_t>(bytes.size()))
  {
  }

  bool variant(int depth)
  {
    quint32 type = 0;
    quint8 isNull = 0;
    if (depth > kovKeyframeCodec::kMaxDepth || !u32(type) || !u8(isNull))
      return false;
    switch (type) {
    case QMetaType::UnknownType: return true;
    case QMetaType::Bool: return skip(1);
    case QMetaType::Int:
    case QMetaType::UInt: return skip(4);
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double: return skip(8);
    case QMetaType::QString:
    case QMetaType::QByteArray: return sized(type == QMetaType::QString);
    case QMetaType::QStringList: return stringList();
    case QMetaType::QVariantList: return variantList(depth);
    default: return false;
    }
  }

  bool atEnd() const { return m_left == 0; }

private:
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
  bool skip(size_t n)
  {
    if (m_left < n)
      return false;
    m_data += n;
    m_left -= n;
    return true;
  }
  // A length-prefixed block; all ones marks a null text or array.
  bool sized(bool utf16)
  {
    quint32 length = 0;
    if (!u32(length))
      return false;
    if (length == 0xFFFFFFFFu)
      return true;
    if (utf16 && (length & 1u))
      return false;
    return skip(length);
  }
  bool stringList()
  {
    quint32 count = 0;
    if (!u32(count) || count > m_left / 4)
      return false;
    for (quint32 i = 0; i < count; ++i) {
      if (!sized(true))
        return false;
    }
    return true;
  }
  bool variantList(int depth)
  {
    quint32 count = 0;
    // Every element takes at least its type id and null flag.
    if (!u32(count) || count > m_left / 5)
      return false;
    for (quint32 i = 0; i < count; ++i) {
      if (!variant(depth + 1))
        return false;
    }
    return true;
  }

  const uchar* m_data;
  size_t m_left;
};

} // namespace

QByteArray kovKeyframeCodec::encode(const QVariant& value)
{
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out << value;
  return bytes;
}

bool kovKeyframeCodec::decode(const QByteArray& bytes, QVariant& value)
{
  VariantWalker walker(bytes);
  if (!walker.variant(0) || !walker.atEnd())
    return false;
  QDataStream in(bytes);
  QVariant read;
  in >> read;
  if (in.status() != QDataStream::Ok)
    return false;
  value = read;
  return true;
}
