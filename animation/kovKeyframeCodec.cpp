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

// Writes the bytes QDataStream writes for the kinds keyframes hold, without
// a stream and a device per keyframe (which cost most of a drawing's saving
// time). False for anything else, or a variant that is null, whose flag only
// QDataStream knows: the caller streams those.
class VariantBytes {
public:
  static bool write(const QVariant& value, QByteArray& out, int depth)
  {
    if (value.isNull() || depth > kovKeyframeCodec::kMaxDepth)
      return false;
    const int type = value.userType();
    u32(out, static_cast<quint32>(type));
    out.append('\0');
    switch (type) {
    case QMetaType::Bool: out.append(value.toBool() ? '\1' : '\0'); return true;
    case QMetaType::Int: u32(out, static_cast<quint32>(value.toInt())); return true;
    case QMetaType::Double: {
      const double d = value.toDouble();
      quint64 bits;
      std::memcpy(&bits, &d, sizeof bits);
      u64(out, bits);
      return true;
    }
    case QMetaType::QString: text(out, value.toString()); return true;
    case QMetaType::QVariantList: {
      const QVariantList list = value.toList();
      u32(out, static_cast<quint32>(list.size()));
      for (const QVariant& element : list) {
        if (!write(element, out, depth + 1))
          return false;
      }
      return true;
    }
    default: return false;
    }
  }

private:
  static void u32(QByteArray& out, quint32 v)
  {
    char b[4];
    qToBigEndian(v, b);
    out.append(b, 4);
  }
  static void u64(QByteArray& out, quint64 v)
  {
    char b[8];
    qToBigEndian(v, b);
    out.append(b, 8);
  }
  static void text(QByteArray& out, const QString& s)
  {
    if (s.isNull()) {
      u32(out, 0xFFFFFFFFu);
      return;
    }
    u32(out, static_cast<quint32>(s.size()) * 2u);
    const int at = out.size();
    out.resize(at + s.size() * 2);
    qToBigEndian<quint16>(s.utf16(), s.size(), out.data() + at);
  }
};

// Builds the variant of bytes that VariantWalker accepted, for the kinds
// VariantBytes writes; false (the caller streams) for any other kind or a
// null flag.
class VariantReader {
public:
  explicit VariantReader(const QByteArray& bytes)
    : m_data(reinterpret_cast<const uchar*>(bytes.constData()))
  {
  }

  bool variant(QVariant& value)
  {
    const quint32 type = u32();
    if (*m_data++ != 0)
      return false;
    switch (type) {
    case QMetaType::Bool: value = QVariant(*m_data++ != 0); return true;
    case QMetaType::Int: value = QVariant(static_cast<int>(u32())); return true;
    case QMetaType::Double: {
      const quint64 bits = qFromBigEndian<quint64>(m_data);
      m_data += 8;
      double d;
      std::memcpy(&d, &bits, sizeof d);
      value = QVariant(d);
      return true;
    }
    case QMetaType::QString: {
      const quint32 length = u32();
      if (length == 0xFFFFFFFFu) {
        value = QVariant(QString());
        return true;
      }
      QString s(static_cast<int>(length / 2), Qt::Uninitialized);
      qFromBigEndian<quint16>(m_data, s.size(), s.data());
      m_data += length;
      value = QVariant(s);
      return true;
    }
    case QMetaType::QVariantList: {
      const quint32 count = u32();
      QVariantList list;
      list.reserve(static_cast<int>(count));
      for (quint32 i = 0; i < count; ++i) {
        QVariant element;
        if (!variant(element))
          return false;
        list.append(element);
      }
      value = QVariant(list);
      return true;
    }
    default: return false;
    }
  }

private:
  quint32 u32()
  {
    const quint32 v = qFromBigEndian<quint32>(m_data);
    m_data += 4;
    return v;
  }

  const uchar* m_data;
};

} // namespace

QByteArray kovKeyframeCodec::encode(const QVariant& value)
{
  QByteArray bytes;
  if (VariantBytes::write(value, bytes, 0))
    return bytes;
  bytes.clear();
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out << value;
  return bytes;
}

bool kovKeyframeCodec::decode(const QByteArray& bytes, QVariant& value)
{
  VariantWalker walker(bytes);
  if (!walker.variant(0) || !walker.atEnd())
    return false;
  VariantReader reader(bytes);
  if (reader.variant(value))
    return true;
  QDataStream in(bytes);
  QVariant read;
  in >> read;
  if (in.status() != QDataStream::Ok)
    return false;
  value = read;
  return true;
}
