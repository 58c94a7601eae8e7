// Damaged tracks and animations: every reader refuses them with an error that
// names the animation or track and the fault, never crashes, and never sizes
// an allocation by a count it has not checked (the allocation limit catches
// that under AddressSanitizer).

#include "kovAllocationLimit.h"
#include "kovAnimationDbFixture.h"
#include "kovFilingSamples.h"
#include "kovLegacyFiling.h"

#include "animation/kovKeyframeCodec.h"

#include "Db/OdDbMemoryFiler.h"
#include "Rx/OdError.h"

#include <QDataStream>
#include <QEasingCurve>

#include <cstring>
#include <functional>

namespace {

using Bytes = std::vector<OdUInt8>;

Bytes filed(const std::function<void(OdDbDwgFiler*)>& write)
{
  OdDbMemoryFiler filer;
  write(&filer);
  return Bytes(filer.data(), filer.data() + filer.size());
}

// The message of the error a read of the first length bytes raises; empty
// when it reads.
std::string readError(const Bytes& bytes, size_t length, bool animation)
{
  OdDbDatabasePtr db = OdDbDatabase::createObject();
  OdDbMemoryFiler filer(db.get());
  filer.setExternalBuffer(bytes.data(), length);
  try {
    kovAnimationTrack track;
    const OdResult res =
      animation ? kovDbAnimation::createObject()->dwgInFields(&filer) : track.dwgInFields(&filer);
    return res == eOk ? std::string() : std::string("result ") + std::to_string(res);
  } catch (const OdError& error) {
    const std::string text = error.description().toUtf8();
    return text.empty() ? std::string("(an error without a message)") : text;
  }
}

std::string trackError(const Bytes& bytes)
{
  return readError(bytes, bytes.size(), false);
}

std::string animationError(const Bytes& bytes)
{
  return readError(bytes, bytes.size(), true);
}

void putInt32(Bytes& bytes, size_t at, OdInt32 value)
{
  std::memcpy(bytes.data() + at, &value, 4);
}

kovFiledTrack sampleTrack()
{
  kovFiledTrack track;
  track.name = QStringLiteral("Crane");
  track.entityUniqueName = QStringLiteral("Camera");
  kovFiledItem item;
  item.valueList = QStringList { QStringLiteral("a") };
  item.keyframes = { { 100, QVariantList { 1.0, 2.0, 3.0 } }, { 200, QVariantList { 4.0, 5.0, 6.0 } } };
  track.items = { item };
  track.hasBlock = true;
  track.blockHandle = OdDbHandle(0x42);
  return track;
}

kovFiledAnimation sampleAnimation()
{
  kovFiledAnimation animation;
  animation.name = QStringLiteral("Walk");
  animation.tracks = { sampleTrack(), sampleTrack() };
  kovFiledCut cut;
  cut.name = QStringLiteral("One");
  cut.trackIndex = 1;
  animation.cuts = { cut, cut };
  animation.gizmosHidden = true;
  return animation;
}

// Offsets in the bytes of sampleTrack() filed as version 113.
const size_t kItemCountAt = 4 + (4 + 10) + 4 + 8 + (4 + 12) + 4;
const size_t kValueListCountAt = kItemCountAt + 4 + 4 + 4 + 4 + 3 + 16 + 4;
const size_t kKeyframeCountAt = kValueListCountAt + 4 + (4 + 2);
const size_t kByteCountAt = kKeyframeCountAt + 4 + 4;

class FilingDamage : public kovAnimationDbFixture {};

TEST_F(FilingDamage, everyTruncationOfATrackIsRefused)
{
  const Bytes bytes = filed([](OdDbDwgFiler* f) { kovWriteTrackV113(f, sampleTrack()); });
  ASSERT_EQ(trackError(bytes), "");
  for (size_t length = 0; length < bytes.size(); ++length) {
    const std::string error = readError(bytes, length, false);
    ASSERT_NE(error, "") << "length " << length;
    ASSERT_NE(error.find("Animation track"), std::string::npos) << error;
    if (length > 18) {
      ASSERT_NE(error.find("\"Crane\""), std::string::npos) << error;
    }
  }
}

TEST_F(FilingDamage, everyTruncationOfAnAnimationIsRefused)
{
  const Bytes bytes = filed([](OdDbDwgFiler* f) { kovWriteAnimationV113(f, sampleAnimation()); });
  ASSERT_EQ(animationError(bytes), "");
  for (size_t length = 0; length < bytes.size(); ++length) {
    const std::string error = readError(bytes, length, true);
    ASSERT_NE(error, "") << "length " << length;
    if (length > 3) {
      ASSERT_NE(error.find("Animation \""), std::string::npos) << error;
    }
  }
}

TEST_F(FilingDamage, impossibleCountsAndLengthsAreRefusedBeforeAllocating)
{
  const Bytes track = filed([](OdDbDwgFiler* f) { kovWriteTrackV113(f, sampleTrack()); });
  ASSERT_EQ(track[kByteCountAt], kovKeyframeBytes(QVariantList { 1.0, 2.0, 3.0 }).size()) << "offsets";
  const struct {
    const char* name;
    size_t at;
    const char* expected;
  } fields[] = { { "item count", kItemCountAt, "impossible sub-track count" },
                 { "value list count", kValueListCountAt, "impossible value list count" },
                 { "keyframe count", kKeyframeCountAt, "impossible keyframe count" },
                 { "keyframe byte count", kByteCountAt, "impossible keyframe byte count" } };
  for (const auto& field : fields) {
    for (OdInt32 count : { -1, INT_MIN, INT_MAX, 0x10000000, 1000 }) {
      Bytes damaged = track;
      putInt32(damaged, field.at, count);
      const std::string error = trackError(damaged);
      EXPECT_NE(error.find(field.expected), std::string::npos) << field.name << " " << count << ": " << error;
      EXPECT_NE(error.find("\"Crane\""), std::string::npos) << error;
    }
  }
}

TEST_F(FilingDamage, impossibleTrackAndCutCountsAreRefused)
{
  kovFiledAnimation record = sampleAnimation();
  const Bytes bytes = filed([&](OdDbDwgFiler* f) { kovWriteAnimationV113(f, record); });
  const size_t trackCountAt = 3 + 4 + (4 + 8) + 4 + 12;
  const size_t cutCountAt = bytes.size() - 1 - 2 * 60 - 4;
  ASSERT_EQ(bytes[trackCountAt], 2);
  ASSERT_EQ(bytes[cutCountAt], 2);
  for (OdInt32 count : { -1, INT_MIN, INT_MAX, 0x10000000, 100 }) {
    Bytes damaged = bytes;
    putInt32(damaged, trackCountAt, count);
    EXPECT_NE(animationError(damaged).find("Animation \"Walk\": impossible track count"), std::string::npos)
      << animationError(damaged);
    damaged = bytes;
    putInt32(damaged, cutCountAt, count);
    EXPECT_NE(animationError(damaged).find("Animation \"Walk\": impossible camera cut count"), std::string::npos)
      << animationError(damaged);
  }
}

TEST_F(FilingDamage, failedReadLeavesTheAnimationsTracksWhole)
{
  Bytes bytes = filed([](OdDbDwgFiler* f) { kovWriteAnimationV113(f, sampleAnimation()); });
  bytes.resize(bytes.size() - 150); // inside the second track
  kovDbAnimationPtr animation = kovDbAnimation::createObject();
  animation->editTracks().push_back(kovAnimationTrackPtr(new kovAnimationTrack));
  OdDbMemoryFiler filer;
  filer.setExternalBuffer(bytes.data(), bytes.size());
  EXPECT_THROW(animation->dwgInFields(&filer), OdError);
  for (const kovAnimationTrackPtr& track : animation->constTracks())
    EXPECT_FALSE(track.isNull());
}

// A track of one item whose only keyframe holds the given bytes.
Bytes trackWithKeyframeBytes(const QByteArray& value)
{
  kovFiledTrack record;
  record.name = QStringLiteral("Lamp");
  kovFiledItem item;
  item.keyframes = { { 500, 0.0 } };
  record.items = { item };
  const Bytes plain = filed([&](OdDbDwgFiler* f) { kovWriteTrackV113(f, record); });
  const size_t bytesAt = 4 + (4 + 8) + 4 + 8 + 4 + 4 + 4 + (4 + 4 + 4 + 3 + 16 + 4 + 4 + 4) + 8;
  const size_t plainSize = size_t(kovKeyframeBytes(0.0).size());
  return filed([&](OdDbDwgFiler* f) {
    f->wrBytes(plain.data(), OdUInt32(bytesAt - 4));
    f->wrInt32(value.size());
    f->wrBytes(value.constData(), OdUInt32(value.size()));
    f->wrBytes(plain.data() + bytesAt + plainSize, OdUInt32(plain.size() - bytesAt - plainSize));
  });
}

QByteArray streamed(const std::function<void(QDataStream&)>& write)
{
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  write(out);
  return bytes;
}

QVariant nested(int depth)
{
  QVariant value = 1.0;
  for (int i = 0; i < depth; ++i)
    value = QVariantList { value };
  return value;
}

TEST_F(FilingDamage, damagedKeyframeValuesAreRefused)
{
  ASSERT_EQ(trackError(trackWithKeyframeBytes(kovKeyframeBytes(2.5))), "");
  ASSERT_EQ(trackError(trackWithKeyframeBytes(kovKeyframeBytes(nested(kovKeyframeCodec::kMaxDepth)))), "");
  const struct {
    const char* name;
    QByteArray bytes;
  } cases[] = {
    { "empty", QByteArray() },
    { "unknown type id", streamed([](QDataStream& s) { s << quint32(0x7777) << quint8(0) << double(1); }) },
    { "a type whose bytes can't be trusted", kovKeyframeBytes(QVariant(QEasingCurve(QEasingCurve::InQuad))) },
    { "list count 0x7fffffff", streamed([](QDataStream& s) { s << quint32(QMetaType::QVariantList) << quint8(0)
                                                                << quint32(0x7fffffff) << QVariant(1.0); }) },
    { "string list count 0x7fffffff", streamed([](QDataStream& s) { s << quint32(QMetaType::QStringList)
                                                                       << quint8(0) << quint32(0x7fffffff); }) },
    { "nested too deep", kovKeyframeBytes(nested(kovKeyframeCodec::kMaxDepth + 1)) },
    { "nested very deep", kovKeyframeBytes(nested(5000)) },
    { "odd string length", streamed([](QDataStream& s) { s << quint32(QMetaType::QString) << quint8(0)
                                                           << quint32(3) << quint8(0) << quint8('a') << quint8(0); }) },
    { "string longer than the bytes", streamed([](QDataStream& s) { s << quint32(QMetaType::QString) << quint8(0)
                                                                      << quint32(0x7ffffffe); }) },
    { "cut-off double", kovKeyframeBytes(2.5).left(9) },
    { "bytes after the value", kovKeyframeBytes(2.5) + QByteArray(1, '\0') },
  };
  for (const auto& c : cases) {
    const std::string error = trackError(trackWithKeyframeBytes(c.bytes));
    EXPECT_NE(error.find("Animation track \"Lamp\": the keyframe value at 500 ms is damaged"), std::string::npos)
      << c.name << ": " << error;
  }
}

TEST_F(FilingDamage, randomByteDamageNeverCrashesTheReaders)
{
  std::mt19937 rng(4242);
  const Bytes animation = filed([](OdDbDwgFiler* f) { kovWriteAnimationV113(f, sampleAnimation()); });
  int refused = 0;
  for (int round = 0; round < 3000; ++round) {
    Bytes damaged = animation;
    const int flips = 1 + int(rng() % 4);
    for (int i = 0; i < flips; ++i)
      damaged[rng() % damaged.size()] = OdUInt8(rng());
    if (!animationError(damaged).empty())
      ++refused;
    trackError(Bytes(damaged.begin() + 3 + 4 + (4 + 8) + 4 + 12 + 4, damaged.end()));
  }
  EXPECT_GT(refused, 100) << "most damage is noticed";
}

} // namespace
