#include "animation/kovKeyframeCodec.h"

#include "animation/kovVariantStreamCheck.h"

#include <QDataStream>
#include <QDateTime>
#include <QtEndian>

#include <cstring>

namespace {

// Writes the bytes QDataStream writes for the kinds keyframes hold, without
// a stream and a device per keyframe (which cost most of a drawing's saving
// time). False for anything else, or a variant that is null, whose flag only
// QDataStream knows: the caller streams those.
class VariantBytes {
public:
  static bool write(const QVariant& value, QByteArray& out, int depth)
  {
    if (value.isNull() || depth > kovVariantStreamCheck::kMaxDepth)
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

namespace {

// Reads what the walk accepts; false when QDataStream does not take every byte.
bool decodeChecked(const QByteArray& bytes, QVariant& value)
{
  if (!kovVariantStreamCheck::isWholeVariant(bytes))
    return false;
  VariantReader reader(bytes);
  if (reader.variant(value))
    return true;
  QDataStream in(bytes);
  QVariant read;
  in >> read;
  if (in.status() != QDataStream::Ok || !in.atEnd())
    return false;
  value = read;
  return true;
}

// Values whose bytes are plain numbers and texts read back bit for bit.
bool readsBackBitForBit(int type)
{
  switch (type) {
  case QMetaType::QString:
  case QMetaType::QByteArray:
  case QMetaType::QStringList:
  case QMetaType::QByteArrayList:
  case QMetaType::QBitArray: return true;
  default: return kovVariantStreamCheck::hasFixedSize(type);
  }
}

QString whyNot(const QVariant& value, int depth);

template <typename Container> QString firstWhyNot(const Container& elements, int depth)
{
  for (const QVariant& element : elements) {
    const QString why = whyNot(element, depth + 1);
    if (!why.isEmpty())
      return why;
  }
  return QString();
}

QString whyNot(const QVariant& value, int depth)
{
  const int type = value.userType();
  const QString typeName = QString::fromLatin1(QMetaType::typeName(type) ? QMetaType::typeName(type) : "?");
  if (depth > kovVariantStreamCheck::kMaxDepth)
    return QStringLiteral("lists and maps nest more than %1 levels deep").arg(kovVariantStreamCheck::kMaxDepth);
  if (!kovVariantStreamCheck::knowsType(type))
    return QStringLiteral("values of type %1 can't be kept in a drawing").arg(typeName);
  if (type == QMetaType::QVariantList)
    return firstWhyNot(value.toList(), depth);
  if (type == QMetaType::QVariantMap)
    return firstWhyNot(value.toMap(), depth);
  if (type == QMetaType::QVariantHash)
    return firstWhyNot(value.toHash(), depth);
  // Checked before encoding: QDataStream crashes on a zone it doesn't know.
  if (type == QMetaType::QDateTime && value.toDateTime().timeSpec() == Qt::TimeZone)
    return QStringLiteral("a date and time in a named time zone can't be kept in a drawing, since its meaning "
                          "depends on the computer's time zone data; convert it to UTC or to an offset from UTC");
  if (readsBackBitForBit(type))
    return QString();
  // Bytes that read back into a value that writes the same bytes again are
  // kept; NaNs inside are no equal values, so equality is asked only of values
  // equal to themselves.
  const QByteArray bytes = kovKeyframeCodec::encode(value);
  QVariant back;
  if (!decodeChecked(bytes, back) || kovKeyframeCodec::encode(back) != bytes
      || (back != value && value == value))
    return QStringLiteral("this %1 value doesn't read back as it was written").arg(typeName);
  return QString();
}

} // namespace

QString kovKeyframeCodec::whyNotStorable(const QVariant& value)
{
  return whyNot(value, 0);
}

bool kovKeyframeCodec::decode(const QByteArray& bytes, QVariant& value)
{
  QVariant read;
  if (!decodeChecked(bytes, read))
    return false;
  // Bytes this writer did not write (a URL or a locale changed by damage, say)
  // can read as a value that writes other bytes. Such a value is taken as it
  // reads back once more, so that a drawing that opens also saves; one that
  // still changes is refused.
  if (!whyNotStorable(read).isEmpty()) {
    const QByteArray again = encode(read);
    if (!decodeChecked(again, read) || !whyNotStorable(read).isEmpty())
      return false;
  }
  value = read;
  return true;
}
