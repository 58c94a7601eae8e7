// Keyframe values in the drawing: a value a keyframe takes reads back from its
// bytes as it was written; a value that would not is refused when it is set;
// damaged bytes are refused, or read as a value that saves again, without
// large allocations.

#define KOV_ALLOCATION_LIMIT_MB "8"
#include "kovAllocationLimit.h"

#include "animation/kovAnimationItem.h"
#include "animation/kovKeyframeCodec.h"
#include "kovLegacyFiling.h"

#include <QtCore>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <set>

namespace {

// A type of the application's own, streamable once registered.
struct Opaque {
  int n = 0;
  bool operator==(const Opaque& other) const { return n == other.n; }
};

} // namespace

Q_DECLARE_METATYPE(Opaque)

namespace {

QDataStream& operator<<(QDataStream& out, const Opaque& value)
{
  return out << value.n;
}

QDataStream& operator>>(QDataStream& in, Opaque& value)
{
  return in >> value.n;
}

const double kNaN = std::numeric_limits<double>::quiet_NaN();

// One value, at least, of every QtCore type that QDataStream streams.
std::vector<QVariant> leafSamples()
{
  const QJsonObject object { { QStringLiteral("speed"), 2.5 }, { QStringLiteral("on"), true } };
  const QJsonArray array { 1, QStringLiteral("two"), object };
  return {
    QVariant(), QVariant(true), QVariant(-7), QVariant(7u), QVariant(-(qlonglong(1) << 40)),
    QVariant(qulonglong(1) << 63), QVariant(2.5), QVariant(kNaN), QVariant(-0.0), QVariant(1.5f),
    QVariant(QVariant::Double), QVariant::fromValue(long(-3)), QVariant::fromValue(ulong(3)),
    QVariant::fromValue(short(-2)), QVariant::fromValue(ushort(2)), QVariant::fromValue(char('x')),
    QVariant::fromValue(static_cast<signed char>(-1)), QVariant::fromValue(uchar(200)), QVariant(QChar(0x263A)),
    QVariant(QString::fromUtf8("Z\xC3\xBCrich \xF0\x9F\x8E\xA5")), QVariant(QString()),
    QVariant(QByteArray("a\0b", 3)),
    QVariant(QStringList { QStringLiteral("sky"), QString(), QString::fromUtf8("\xE6\x97\xA5") }),
    QVariant::fromValue(QByteArrayList { "a", QByteArray(), "" }), QVariant(QBitArray(11, true)),
    QVariant(QDate(2026, 11, 23)), QVariant(QDate()), QVariant(QTime(12, 34, 56, 789)), QVariant(QTime()),
    QVariant(QDateTime(QDate(2026, 6, 21), QTime(12, 0), Qt::UTC)),
    QVariant(QDateTime(QDate(2026, 6, 21), QTime(12, 0), Qt::LocalTime)),
    QVariant(QDateTime(QDate(2026, 6, 21), QTime(12, 0), Qt::OffsetFromUTC, 5 * 3600 + 1800)), QVariant(QDateTime()),
    QVariant(QUrl(QStringLiteral("https://example.org/a%20b?c=d#e"))), QVariant(QUrl()),
    QVariant(QLocale(QLocale::German, QLocale::Switzerland)), QVariant(QRect(1, 2, 30, 40)),
    QVariant(QRectF(0.5, -1.5, 2.25, kNaN)), QVariant(QSize(1920, 1080)), QVariant(QSizeF(1.5, 2.5)),
    QVariant(QLine(1, 2, 3, 4)), QVariant(QLineF(1.5, 2.5, 3.5, 4.5)), QVariant(QPoint(-5, 6)),
    QVariant(QPointF(1.5, kNaN)), QVariant(QRegExp(QStringLiteral("cam.*"), Qt::CaseInsensitive, QRegExp::Wildcard)),
    QVariant(QRegularExpression(QStringLiteral("^cam\\d+$"), QRegularExpression::MultilineOption)),
    QVariant(QUuid(QStringLiteral("{67c8770b-44f1-410a-ab9a-f9b5446f13ee}"))), QVariant(QJsonValue()),
    QVariant(QJsonValue(QJsonValue::Undefined)), QVariant(QJsonValue(false)), QVariant(QJsonValue(2.5)),
    QVariant(QJsonValue(QStringLiteral("text"))), QVariant(QJsonValue(array)), QVariant(QJsonValue(object)),
    QVariant(object), QVariant(array), QVariant(QJsonDocument(object)), QVariant(QJsonDocument()),
    QVariant::fromValue(QCborValue(42)),
    QVariant::fromValue(QCborValue(QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC))),
    QVariant::fromValue(QCborArray { 1, QStringLiteral("a"), QCborMap { { 1, 2 } } }),
    QVariant::fromValue(QCborMap { { QStringLiteral("k"), QCborArray { 1.5, true } } }),
    QVariant::fromValue(QCborSimpleType(32)), QVariant::fromValue<std::nullptr_t>(nullptr),
    QVariant(QVariantList { 1, QStringLiteral("x"), QVariantList { 2.5 } }),
    QVariant(QVariantMap { { QStringLiteral("a"), 1 }, { QStringLiteral("b"), QVariantList { 1.5 } } }),
    QVariant(QVariantHash { { QStringLiteral("h"), QStringLiteral("v") } }),
  };
}

bool sameElements(const QVariantList& back, const QVariantList& value);
template <typename Map> bool sameEntries(const Map& back, const Map& value);

// Equal, or for a value that is a NaN or holds one (never equal to itself),
// the same bytes. Containers are compared element by element: a container
// sharing its data with another is equal to it without comparing elements.
bool readsBackAs(const QVariant& back, const QVariant& value)
{
  if (back.userType() != value.userType() || back.isNull() != value.isNull())
    return false;
  switch (value.userType()) {
  case QMetaType::QVariantList: return sameElements(back.toList(), value.toList());
  case QMetaType::QVariantMap: return sameEntries(back.toMap(), value.toMap());
  case QMetaType::QVariantHash: return sameEntries(back.toHash(), value.toHash());
  default:
    if (value == value)
      return back == value;
    return kovKeyframeCodec::encode(back) == kovKeyframeCodec::encode(value);
  }
}

bool sameElements(const QVariantList& back, const QVariantList& value)
{
  if (back.size() != value.size())
    return false;
  for (int i = 0; i < value.size(); ++i) {
    if (!readsBackAs(back[i], value[i]))
      return false;
  }
  return true;
}

template <typename Map> bool sameEntries(const Map& back, const Map& value)
{
  if (back.size() != value.size())
    return false;
  for (auto it = value.cbegin(); it != value.cend(); ++it) {
    if (!back.contains(it.key()) || !readsBackAs(back.value(it.key()), it.value()))
      return false;
  }
  return true;
}

void expectRoundTrip(const QVariant& value)
{
  SCOPED_TRACE(std::string("type ") + (value.isValid() ? value.typeName() : "invalid") + ", bytes "
               + kovKeyframeBytes(value).toHex().left(160).toStdString());
  EXPECT_EQ(kovKeyframeCodec::whyNotStorable(value), QString());
  const QByteArray bytes = kovKeyframeCodec::encode(value);
  EXPECT_EQ(bytes, kovKeyframeBytes(value));
  QVariant back;
  ASSERT_TRUE(kovKeyframeCodec::decode(bytes, back));
  EXPECT_TRUE(readsBackAs(back, value));
}

// Nested lists, maps and hashes of leaves; hashes hold no NaN, whose bytes
// would be the only way to compare them and follow the hash's order.
QVariant nested(std::mt19937& rng, const std::vector<QVariant>& leaves, int depth, bool inHash = false)
{
  // Leaves hold lists and maps two levels deep.
  const int kind = depth >= kovKeyframeCodec::kMaxDepth - 2 ? 0 : std::uniform_int_distribution<int>(0, 3)(rng);
  const int count = std::uniform_int_distribution<int>(0, 4)(rng);
  switch (kind) {
  case 1: {
    QVariantList list;
    for (int i = 0; i < count; ++i)
      list << nested(rng, leaves, depth + 1, inHash);
    return list;
  }
  case 2: {
    QVariantMap map;
    for (int i = 0; i < count; ++i)
      map.insert(QString::number(rng() % 8), nested(rng, leaves, depth + 1, inHash));
    return map;
  }
  case 3: {
    QVariantHash hash;
    for (int i = 0; i < count; ++i)
      hash.insert(QString::number(rng() % 8), nested(rng, leaves, depth + 1, true));
    return hash;
  }
  default:
    for (;;) {
      const QVariant& leaf = leaves[rng() % leaves.size()];
      if (!inHash || leaf == leaf)
        return leaf;
    }
  }
}

QVariant nestedDepth(int levels)
{
  QVariant value = 1.0;
  for (int i = 0; i < levels; ++i)
    value = QVariantList { value };
  return value;
}

TEST(KeyframeCodec, everyStreamedCoreTypeIsSampledOrRefused)
{
  std::set<int> sampled;
  for (const QVariant& value : leafSamples())
    sampled.insert(value.userType());
  // An easing curve files a function address; a variant of a variant never
  // arises, QVariant unwraps it.
  const std::set<int> refused { QMetaType::QEasingCurve, QMetaType::QVariant };
  for (int type = 0; type <= QMetaType::LastCoreType; ++type) {
    if (!QMetaType::isRegistered(type) || type == QMetaType::Void)
      continue;
    QVariant value(type, nullptr);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    const bool streams = QMetaType::save(out, type, value.constData());
    EXPECT_EQ(streams, sampled.count(type) + refused.count(type) == 1u) << QMetaType::typeName(type);
  }
}

TEST(KeyframeCodec, everyLeafAndNestingOfThemReadsBackAsWrittenInQDataStreamBytes)
{
  const std::vector<QVariant> leaves = leafSamples();
  for (const QVariant& value : leaves)
    expectRoundTrip(value);
  std::mt19937 rng(20261123);
  for (int i = 0; i < 300; ++i)
    expectRoundTrip(nested(rng, leaves, 0));
  expectRoundTrip(nestedDepth(kovKeyframeCodec::kMaxDepth));
}

TEST(KeyframeCodec, valuesThatWouldNotReadBackAreRefusedWhenSet)
{
  qRegisterMetaType<Opaque>();
  qRegisterMetaTypeStreamOperators<Opaque>();
  const struct {
    const char* name;
    QVariant value;
    const char* reason;
  } rows[] = {
    { "easing curve", QVariant(QEasingCurve(QEasingCurve::InOutQuad)), "QEasingCurve can't be kept" },
    { "named time zone", QVariant(QDateTime(QDate(2026, 1, 1), QTime(9, 0), QTimeZone("Europe/Berlin"))),
      "named time zone" },
    { "offset as a zone", QVariant(QDateTime(QDate(2026, 1, 1), QTime(9, 0), QTimeZone(7200))), "named time zone" },
    { "invalid url", QVariant(QUrl(QStringLiteral("http://[bad"))), "doesn't read back" },
    { "model index", QVariant::fromValue(QModelIndex()), "QModelIndex can't be kept" },
    { "object pointer", QVariant::fromValue(static_cast<QObject*>(nullptr)), "QObject* can't be kept" },
    { "application type", QVariant::fromValue(Opaque { 3 }), "Opaque can't be kept" },
    { "nested too deep", nestedDepth(kovKeyframeCodec::kMaxDepth + 1), "nest more than 8" },
    { "bad value in a map", QVariant(QVariantMap { { QStringLiteral("k"), QVariant::fromValue(QModelIndex()) } }),
      "QModelIndex" },
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_TRUE(kovKeyframeCodec::whyNotStorable(row.value).contains(QLatin1String(row.reason)))
      << kovKeyframeCodec::whyNotStorable(row.value).toStdString();
    kovAnimationItem item;
    item.setValue(0, 1.0);
    int changes = 0;
    QObject::connect(&item, &kovAnimationItem::valueChanged, [&] { ++changes; });
    EXPECT_FALSE(item.setValue(0, row.value));
    EXPECT_FALSE(item.setValues({ { 0, 2.0 }, { 10, row.value } }));
    EXPECT_EQ(item.values(), (QMap<int, QVariant> { { 0, 1.0 } }));
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(item.setValue(5, 2.0));
    EXPECT_EQ(changes, 1);
  }
}

// Every strict prefix is refused; a count, a length or a byte overwritten is
// refused or reads as a value that can be saved again.
TEST(KeyframeCodec, damagedBytesAreRefusedOrReadAsAStorableValue)
{
  std::mt19937 rng(7);
  std::vector<QVariant> values = leafSamples();
  const std::vector<QVariant> leaves = values;
  for (int i = 0; i < 40; ++i)
    values.push_back(nested(rng, leaves, kovKeyframeCodec::kMaxDepth - 4));
  const QByteArray patches[] = { QByteArray("\xFF\xFF\xFF\xF0", 4), QByteArray("\x7F\xFF\xFF\xFF", 4),
                                 QByteArray("\x00\x0F\xFF\xFF", 4), QByteArray("\x80", 1) };
  for (const QVariant& value : values) {
    const QByteArray bytes = kovKeyframeCodec::encode(value);
    SCOPED_TRACE(bytes.toHex().left(160).toStdString());
    QVariant read;
    for (int length = 0; length < bytes.size(); ++length)
      ASSERT_FALSE(kovKeyframeCodec::decode(bytes.left(length), read)) << "prefix of " << length;
    for (const QByteArray& patch : patches) {
      for (int at = 0; at + patch.size() <= bytes.size(); ++at) {
        QByteArray damaged = bytes;
        damaged.replace(at, patch.size(), patch);
        if (kovKeyframeCodec::decode(damaged, read)) {
          ASSERT_EQ(kovKeyframeCodec::whyNotStorable(read), QString()) << "patched at " << at;
        }
      }
    }
  }
}

TEST(KeyframeCodec, oddTextsCborOverclaimsAndUncheckableKindsAreRefused)
{
  const struct {
    const char* name;
    QByteArray bytes;
  } rows[] = {
    { "text of odd length", QByteArray::fromHex("0000000a" "00" "00000003" "004100") },
    { "CBOR array of a million items", QByteArray::fromHex("00000036" "00" "00000005" "9a000fffff") },
    { "CBOR map of a million pairs", QByteArray::fromHex("00000037" "00" "00000005" "ba000fffff") },
    { "CBOR text longer than its bytes", QByteArray::fromHex("00000035" "00" "00000005" "7a0fffffff") },
    { "CBOR with bytes after its item", QByteArray::fromHex("00000035" "00" "00000002" "0101") },
    { "time zone by name", QByteArray::fromHex("00000010" "00" "0000000000258500" "00000000" "03" "00000002" "0041") },
    { "unknown time basis", QByteArray::fromHex("00000010" "00" "0000000000258500" "00000000" "07") },
    { "easing curve", QByteArray::fromHex("0000001d" "00" "03" "0000000000000000" "00") },
    { "application type", QByteArray::fromHex("00000400" "00" "00000007" "4f706171756500" "00000003") },
  };
  for (const auto& row : rows) {
    QVariant read;
    EXPECT_FALSE(kovKeyframeCodec::decode(row.bytes, read)) << row.name;
  }
}

} // namespace
